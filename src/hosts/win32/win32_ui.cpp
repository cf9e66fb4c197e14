#include "hosts/win32/win32_ui.hpp"

#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

// Functions of newer Windows versions, looked up at run time so the program starts on older
// ones too.
template <typename F>
F user32_function(const char* name) {
    return reinterpret_cast<F>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
}

BOOL CALLBACK add_screen(HMONITOR monitor, HDC, LPRECT, LPARAM out) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    if (GetMonitorInfoW(monitor, &info)) {
        const RECT& r = info.rcWork;
        const int dpi = system_dpi();
        reinterpret_cast<std::vector<TwipsRect>*>(out)->push_back(
            {px_to_twips(r.left, dpi), px_to_twips(r.top, dpi), px_to_twips(r.right - r.left, dpi),
             px_to_twips(r.bottom - r.top, dpi)});
    }
    return TRUE;
}

}  // namespace

void set_text(HWND window, std::string_view utf8) {
    SetWindowTextW(window, widen(utf8).c_str());
}

std::string get_text(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return narrow(text);
}

int system_dpi() {
    using GetDpiForSystemFn = UINT(WINAPI*)();
    static const auto for_system = user32_function<GetDpiForSystemFn>("GetDpiForSystem");
    if (for_system) return static_cast<int>(for_system());
    HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : 96;
}

int window_dpi(HWND window) {
    using GetDpiForWindowFn = UINT(WINAPI*)(HWND);
    static const auto for_window = user32_function<GetDpiForWindowFn>("GetDpiForWindow");
    if (for_window && window) {
        const UINT dpi = for_window(window);
        if (dpi > 0) return static_cast<int>(dpi);
    }
    return system_dpi();
}

HFONT make_message_font(int dpi) {
    using SpiForDpiFn = BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT);
    static const auto for_dpi = user32_function<SpiForDpiFn>("SystemParametersInfoForDpi");
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    if (for_dpi &&
        for_dpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, static_cast<UINT>(dpi))) {
        return CreateFontIndirectW(&metrics.lfMessageFont);
    }
    // Older systems give the font at the system DPI: scale it to the window's.
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, system_dpi());
    return CreateFontIndirectW(&metrics.lfMessageFont);
}

int line_height(HWND window, HFONT font) {
    HDC dc = GetDC(window);
    HGDIOBJ old = SelectObject(dc, font);
    TEXTMETRICW tm{};
    GetTextMetricsW(dc, &tm);
    SelectObject(dc, old);
    ReleaseDC(window, dc);
    return tm.tmHeight;
}

HWND make_control(HWND parent, const wchar_t* window_class, std::string_view text, DWORD style,
                  int id, HFONT font, DWORD ex_style) {
    HWND control =
        CreateWindowExW(ex_style, window_class, widen(text).c_str(), WS_CHILD | WS_VISIBLE | style,
                        0, 0, 10, 10, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                        GetModuleHandleW(nullptr), nullptr);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return control;
}

void place_twips(HWND control, const TwipsRect& r, int dpi) {
    MoveWindow(control, twips_to_px(r.left, dpi), twips_to_px(r.top, dpi),
               twips_to_px(r.width, dpi), twips_to_px(r.height, dpi), TRUE);
}

void set_children_font(HWND parent, HFONT font) {
    EnumChildWindows(
        parent,
        [](HWND child, LPARAM f) -> BOOL {
            SendMessageW(child, WM_SETFONT, static_cast<WPARAM>(f), TRUE);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(font));
}

TwipsRect window_twips(HWND window) {
    RECT r{};
    GetWindowRect(window, &r);
    const int dpi = system_dpi();
    return {px_to_twips(r.left, dpi), px_to_twips(r.top, dpi), px_to_twips(r.right - r.left, dpi),
            px_to_twips(r.bottom - r.top, dpi)};
}

void place_window_twips(HWND window, const TwipsRect& r) {
    const int dpi = system_dpi();
    SetWindowPos(window, nullptr, twips_to_px(r.left, dpi), twips_to_px(r.top, dpi),
                 twips_to_px(r.width, dpi), twips_to_px(r.height, dpi),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

TwipsRect primary_screen_twips() {
    const int dpi = system_dpi();
    return {0, 0, px_to_twips(GetSystemMetrics(SM_CXSCREEN), dpi),
            px_to_twips(GetSystemMetrics(SM_CYSCREEN), dpi)};
}

std::vector<TwipsRect> screens_twips() {
    std::vector<TwipsRect> screens;
    EnumDisplayMonitors(nullptr, nullptr, add_screen, reinterpret_cast<LPARAM>(&screens));
    if (screens.empty()) screens.push_back(primary_screen_twips());
    return screens;
}

bool normal_state(HWND window) {
    return !IsIconic(window) && !IsZoomed(window);
}

HICON program_icon(bool small) {
    const int size = GetSystemMetrics(small ? SM_CXSMICON : SM_CXICON);
    return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON,
                                         size, size, LR_SHARED));
}

}  // namespace quiller::win32
