#include "gui_driver.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <thread>

#include "os/win32/win32_platform.hpp"

namespace quiller::win32::test {
namespace {

constexpr int kWaitMs = 10000;

bool poll(const std::function<bool()>& done, int ms = kWaitMs) {
    for (int waited = 0; waited < ms; waited += 50) {
        if (done()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return done();
}

// Thrown when a window a step waits for never shows.
struct NoWindow {};

}  // namespace

std::vector<HWND> Driver::windows(DWORD thread) {
    std::vector<HWND> shown;
    EnumThreadWindows(
        thread,
        [](HWND h, LPARAM p) -> BOOL {
            if (IsWindowVisible(h)) reinterpret_cast<std::vector<HWND>*>(p)->push_back(h);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&shown));
    return shown;
}

void Driver::run(const std::function<void(Driver&)>& drive) {
    try {
        drive(*this);
    } catch (const NoWindow&) {
    }
}

HWND Driver::window_with(int id) {
    HWND found = nullptr;
    poll([&] {
        for (HWND h : windows(ui_thread_))
            if (!found && GetDlgItem(h, id)) found = h;
        return found != nullptr;
    });
    if (!found) {
        ADD_FAILURE() << "no window with control " << id;
        throw NoWindow{};
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(150));  // let it finish showing
    return found;
}

bool Driver::wait_gone(HWND window) {
    return poll([&] { return !IsWindow(window) || !IsWindowVisible(window); });
}

bool Driver::wait_text(HWND window, int id, std::string_view wanted) {
    return poll([&] { return (id ? text(window, id) : text(window)) == wanted; });
}

std::string Driver::text(HWND window) {
    wchar_t buffer[8192] = {};
    const auto n = SendMessageW(window, WM_GETTEXT, 8192, reinterpret_cast<LPARAM>(buffer));
    return narrow({buffer, static_cast<std::size_t>(n)});
}

int Driver::default_button(HWND window) {
    const LRESULT r = SendMessageW(window, DM_GETDEFID, 0, 0);
    return HIWORD(r) == DC_HASDEFID ? LOWORD(r) : 0;
}

void Driver::click(HWND window, int id) {
    HWND button = GetDlgItem(window, id);
    ASSERT_TRUE(IsWindowVisible(button) && IsWindowEnabled(button)) << "button " << id;
    PostMessageW(button, BM_CLICK, 0, 0);
}

HWND Driver::focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(ui_thread_, &info);
    return info.hwndFocus;
}

bool Driver::wait_focus(HWND control) {
    return poll([&] { return focus() == control; });
}

void Driver::post_to_focus(UINT msg, WPARAM w, LPARAM l, UINT then) {
    HWND f = nullptr;
    poll([&] { return (f = focus()) != nullptr; }, 3000);
    ASSERT_NE(f, nullptr) << "no control has the focus";
    PostMessageW(f, msg, w, l);
    if (then) PostMessageW(f, then, w, static_cast<LPARAM>(0xC0000001u));
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
}

void Driver::key(WORD vk) {
    post_to_focus(WM_KEYDOWN, vk, 1, WM_KEYUP);
}

void Driver::alt(char letter) {
    post_to_focus(WM_SYSCHAR, static_cast<WPARAM>(letter), 1 << 29);
}

void Driver::type(std::string_view text) {
    for (wchar_t c : widen(text)) post_to_focus(WM_CHAR, c, 1);
}

void Driver::shot(HWND window, std::string_view name) {
    const char* dir = std::getenv("QUILLER_SHOT_DIR");
    if (!dir || !*dir || !window) return;
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    RECT r{};
    GetWindowRect(window, &r);
    const std::string request = std::string(dir) + "/" + std::string(name) + ".req";
    {
        std::ofstream out(request + ".part");
        out << r.left << ' ' << r.top << ' ' << r.right - r.left << ' ' << r.bottom - r.top << '\n';
    }
    MoveFileExW(widen(request + ".part").c_str(), widen(request).c_str(),
                MOVEFILE_REPLACE_EXISTING);
    EXPECT_TRUE(poll([&] {
        return GetFileAttributesW(widen(request).c_str()) == INVALID_FILE_ATTRIBUTES;
    })) << "no screenshot "
        << name;
}

}  // namespace quiller::win32::test
