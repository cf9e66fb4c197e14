#include "hosts/win32/message_loop.hpp"

#include <vector>

namespace quiller::win32 {
namespace {

bool is_dialog(HWND window) {
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    return lstrcmpW(name, L"#32770") == 0;
}

void dispatch(MSG& m) {
    HWND top = m.hwnd ? GetAncestor(m.hwnd, GA_ROOT) : nullptr;
    if (top && is_dialog(top) && IsDialogMessageW(top, &m)) return;
    TranslateMessage(&m);
    DispatchMessageW(&m);
}

// The thread's enabled, visible top-level windows other than `keep`, disabled.
std::vector<HWND> disable_others(HWND keep) {
    struct Walk {
        HWND keep;
        std::vector<HWND> disabled;
    } walk{keep, {}};
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND h, LPARAM p) -> BOOL {
            auto* w = reinterpret_cast<Walk*>(p);
            if (h != w->keep && IsWindowVisible(h) && IsWindowEnabled(h)) {
                EnableWindow(h, FALSE);
                w->disabled.push_back(h);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&walk));
    return walk.disabled;
}

}  // namespace

void pump_messages() {
    MSG m;
    while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) {
        if (m.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(m.wParam));  // for the outermost loop
            return;
        }
        dispatch(m);
    }
}

void run_modal(HWND window, const std::function<bool()>& done) {
    const std::vector<HWND> disabled = disable_others(window);
    MSG m;
    while (!done()) {
        if (!PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) {
            WaitMessage();
            continue;
        }
        if (m.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(m.wParam));
            break;
        }
        dispatch(m);
    }
    for (HWND h : disabled)
        if (IsWindow(h)) EnableWindow(h, TRUE);
}

}  // namespace quiller::win32
