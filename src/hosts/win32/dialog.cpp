#include "hosts/win32/dialog.hpp"

#include "hosts/win32/win32_ui.hpp"

namespace quiller::win32 {
namespace {

// An empty dialog template: style, no controls, no menu, the dialog class, no title. The
// controls and the font come from the window itself.
struct alignas(4) EmptyTemplate {
    DLGTEMPLATE head;
    WORD menu = 0;
    WORD window_class = 0;
    WORD title = 0;
};

}  // namespace

Dialog::~Dialog() {
    unload();
}

void Dialog::create(std::string_view caption, bool resizable) {
    EmptyTemplate t{};
    t.head.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | DS_3DLOOK;
    if (resizable) t.head.style |= WS_THICKFRAME | WS_MAXIMIZEBOX;
    t.head.dwExtendedStyle = WS_EX_APPWINDOW | WS_EX_CONTROLPARENT;
    CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &t.head, nullptr, procedure,
                               reinterpret_cast<LPARAM>(this));
    if (!hwnd_) return;
    set_text(hwnd_, caption);
    SendMessageW(hwnd_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(program_icon(false)));
    SendMessageW(hwnd_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(program_icon(true)));
    dpi_ = window_dpi(hwnd_);
    font_ = make_message_font(dpi_);
    build();
}

void Dialog::unload() {
    if (hwnd_) {
        HWND h = hwnd_;
        hwnd_ = nullptr;
        SetWindowLongPtrW(h, GWLP_USERDATA, 0);
        DestroyWindow(h);
    }
    if (font_) DeleteObject(font_);
    font_ = nullptr;
}

void Dialog::show() {
    if (!hwnd_) return;
    ShowWindow(hwnd_, SW_SHOW);
    // Active within the program at least, when the system keeps another program in front.
    if (!SetForegroundWindow(hwnd_)) SetActiveWindow(hwnd_);
}

void Dialog::hide() {
    if (hwnd_) ShowWindow(hwnd_, SW_HIDE);
}

void Dialog::set_default_button(int id) {
    // The dialog manager moves the default frame as the focus moves among push buttons.
    SendMessageW(hwnd_, DM_SETDEFID, static_cast<WPARAM>(id), 0);
}

void Dialog::relayout() {
    RECT r{};
    GetClientRect(hwnd_, &r);
    layout(px_to_twips(r.right, dpi_), px_to_twips(r.bottom, dpi_));
}

void Dialog::dpi_changed(int dpi, const RECT& suggested) {
    dpi_ = dpi;
    HFONT old = font_;
    font_ = make_message_font(dpi_);
    set_children_font(hwnd_, font_);
    if (old) DeleteObject(old);
    SetWindowPos(hwnd_, nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    relayout();
}

INT_PTR CALLBACK Dialog::procedure(HWND h, UINT msg, WPARAM w, LPARAM l) {
    if (msg == WM_INITDIALOG) {
        auto* self = reinterpret_cast<Dialog*>(l);
        self->hwnd_ = h;
        SetWindowLongPtrW(h, GWLP_USERDATA, l);
        return FALSE;  // the window sets the focus itself
    }
    auto* self = reinterpret_cast<Dialog*>(GetWindowLongPtrW(h, GWLP_USERDATA));
    if (!self || !self->font_) return FALSE;
    const INT_PTR result = self->handle(msg, w, l);
    return result;
}

INT_PTR Dialog::handle(UINT msg, WPARAM w, LPARAM l) {
    switch (msg) {
        case WM_SIZE:
            if (w != SIZE_MINIMIZED)
                layout(px_to_twips(LOWORD(l), dpi_), px_to_twips(HIWORD(l), dpi_));
            return TRUE;
        case WM_GETMINMAXINFO: {
            RECT r{0, 0, twips_to_px(min_size().width, dpi_), twips_to_px(min_size().height, dpi_)};
            AdjustWindowRectEx(&r, GetWindowLongW(hwnd_, GWL_STYLE), FALSE,
                               GetWindowLongW(hwnd_, GWL_EXSTYLE));
            auto* info = reinterpret_cast<MINMAXINFO*>(l);
            info->ptMinTrackSize = {r.right - r.left, r.bottom - r.top};
            return TRUE;
        }
        case WM_COMMAND:
            if (LOWORD(w) == IDCANCEL && !item(IDCANCEL)) {
                escape();
                return TRUE;
            }
            return command(LOWORD(w), HIWORD(w)) ? TRUE : FALSE;
        case WM_CLOSE:
            close_box();
            return TRUE;
        case 0x02E0: {  // WM_DPICHANGED
            dpi_changed(LOWORD(w), *reinterpret_cast<const RECT*>(l));
            return TRUE;
        }
        default: {
            INT_PTR result = 0;
            if (message(msg, w, l, result)) {
                // Colours and owner drawing answer directly, the rest through the message result.
                const bool direct =
                    (msg >= WM_CTLCOLORMSGBOX && msg <= WM_CTLCOLORSTATIC) || msg == WM_DRAWITEM;
                if (direct) return result;
                SetWindowLongPtrW(hwnd_, DWLP_MSGRESULT, result);
                return TRUE;
            }
            return FALSE;
        }
    }
}

}  // namespace quiller::win32
