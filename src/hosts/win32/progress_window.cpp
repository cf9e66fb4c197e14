#include "hosts/win32/progress_window.hpp"

#include "hosts/win32/control_ids.hpp"
#include "hosts/win32/win32_ui.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

constexpr int kBarHeight = 330;

std::string_view window_name(ProgressWindow kind) {
    return kind == ProgressWindow::Popup ? "frmPopup" : "frmProgress";
}

}  // namespace

void ProgressWindowView::load(const ProgressModel* m) {
    if (loaded()) return;
    create(kind_ == ProgressWindow::Popup ? "Quiller" : "Progress Indicator", true);
    if (!loaded()) return;
    const TwipsRect screen = primary_screen_twips();
    if (kind_ == ProgressWindow::Popup) {
        place_window_twips(hwnd(), popup_place(m ? *m : ProgressModel{}, screen));
    } else {
        const TwipsRect r = load_placement(
            c_.settings, placement_key(window_name(kind_), kVendorKey), progress_place(screen));
        place_window_twips(hwnd(), keep_on_screen(r, screens_twips()));
    }
    cancelled_ = false;
}

void ProgressWindowView::build() {
    HWND h = hwnd();
    make_control(h, L"STATIC", "", SS_NOPREFIX | SS_LEFTNOWORDWRAP, ids::kProgressTitle, font());
    make_control(h, L"STATIC", "", SS_NOPREFIX | SS_LEFTNOWORDWRAP, ids::kProgressInfo, font());
    make_control(h, L"STATIC", "", SS_NOPREFIX | SS_LEFTNOWORDWRAP, ids::kProgressText, font());
    HWND bar =
        make_control(h, L"STATIC", "", SS_OWNERDRAW, ids::kCopyBar, font(), WS_EX_CLIENTEDGE);
    ShowWindow(bar, SW_HIDE);
    make_control(h, L"STATIC", "", SS_NOPREFIX | SS_LEFTNOWORDWRAP, ids::kTimeLabel, font());
    make_control(h, L"BUTTON", "Cancel", BS_DEFPUSHBUTTON | WS_TABSTOP, ids::kCancelButton, font());
    set_default_button(ids::kCancelButton);
}

// The lines and the bar stretch with the window; Cancel stays at the bottom right.
void ProgressWindowView::layout(int width, int height) {
    const int line = px_to_twips(line_height(hwnd(), font()), dpi()) + 30;
    const int full = width - 2 * kMargin;
    int top = kMargin;
    for (int id : {ids::kProgressTitle, ids::kProgressInfo, ids::kProgressText}) {
        place_twips(item(id), {kMargin, top, full, line}, dpi());
        top += line;
    }
    place_twips(item(ids::kCopyBar), {kMargin, top + 60, full, kBarHeight}, dpi());
    top += 60 + kBarHeight + 60;
    const int button_top = std::max(top, height - kMargin - kButtonHeight);
    const bool cancel = GetWindowLongW(item(ids::kCancelButton), GWL_STYLE) & WS_VISIBLE;
    place_twips(item(ids::kTimeLabel),
                {kMargin, top, cancel ? full - kButtonWidth - 120 : full, line}, dpi());
    place_twips(item(ids::kCancelButton),
                {width - kMargin - kButtonWidth, button_top, kButtonWidth, kButtonHeight}, dpi());
}

void ProgressWindowView::start(std::string_view title) {
    load(nullptr);
    if (!loaded()) return;
    shown_.title = title;
    set_text(item(ids::kProgressTitle), title);
    show();
}

void ProgressWindowView::update(const ProgressModel& m) {
    load(&m);
    if (!loaded()) return;
    shown_ = m;
    set_text(item(ids::kProgressTitle), m.title);
    set_text(item(ids::kProgressInfo), m.info);
    set_text(item(ids::kProgressText), m.progress_text);
    set_text(item(ids::kTimeLabel), m.bar_visible ? m.time_line() : std::string());
    ShowWindow(item(ids::kCopyBar), m.bar_visible ? SW_SHOW : SW_HIDE);
    const bool cancel_shown = GetWindowLongW(item(ids::kCancelButton), GWL_STYLE) & WS_VISIBLE;
    if (cancel_shown != m.cancel_visible) {
        ShowWindow(item(ids::kCancelButton), m.cancel_visible ? SW_SHOW : SW_HIDE);
        relayout();
    }
    InvalidateRect(item(ids::kCopyBar), nullptr, FALSE);
    if (!IsWindowVisible(hwnd())) show();
}

void ProgressWindowView::close() {
    if (!loaded()) return;
    if (kind_ == ProgressWindow::Progress && IsWindowVisible(hwnd()) && normal_state(hwnd()))
        save_placement(c_.settings, placement_key(window_name(kind_), kVendorKey),
                       window_twips(hwnd()));
    unload();
}

bool ProgressWindowView::command(int id, int code) {
    if (id != ids::kCancelButton || code != BN_CLICKED) return false;
    cancel();
    return true;
}

void ProgressWindowView::cancel() {
    ProgressModel m = shown_;
    m.window = kind_;
    if (m.press_cancel() == CancelEffect::EndProgram) {
        c_.end_requested = true;
    } else {
        cancelled_ = m.cancelled();
        EnableWindow(item(ids::kCancelButton), FALSE);
    }
}

bool ProgressWindowView::message(UINT msg, WPARAM, LPARAM l, INT_PTR& result) {
    if (msg != WM_DRAWITEM) return false;
    const auto* d = reinterpret_cast<const DRAWITEMSTRUCT*>(l);
    if (d->CtlID != static_cast<UINT>(ids::kCopyBar)) return false;
    draw_bar(*d);
    result = TRUE;
    return true;
}

// The percent centred in the bar; the filled part in the selection colours, the text drawn
// again inside it in the selection's text colour so it stays readable where the box covers it.
void ProgressWindowView::draw_bar(const DRAWITEMSTRUCT& d) const {
    const RECT all = d.rcItem;
    RECT filled = all;
    filled.right = all.left + MulDiv(all.right - all.left, shown_.percent(), 100);
    const std::wstring text = widen(shown_.percent_text());
    HDC dc = d.hDC;
    HGDIOBJ old_font = SelectObject(dc, font());
    SetBkMode(dc, TRANSPARENT);
    FillRect(dc, &all, GetSysColorBrush(COLOR_WINDOW));
    RECT t = all;
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    DrawTextW(dc, text.c_str(), -1, &t, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    FillRect(dc, &filled, GetSysColorBrush(COLOR_HIGHLIGHT));
    const int saved = SaveDC(dc);
    IntersectClipRect(dc, filled.left, filled.top, filled.right, filled.bottom);
    SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
    DrawTextW(dc, text.c_str(), -1, &t, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    RestoreDC(dc, saved);
    SelectObject(dc, old_font);
}

}  // namespace quiller::win32
