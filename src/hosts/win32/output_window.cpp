#include "hosts/win32/output_window.hpp"

#include <commctrl.h>

#include "hosts/win32/control_ids.hpp"
#include "hosts/win32/win32_ui.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

constexpr std::string_view kName = "DisplayForm";
constexpr std::size_t kTailSize = 256;

// Line breaks as the edit control wants them: a lone "\n" becomes "\r\n".
std::wstring edit_text(std::string_view text) {
    std::string out;
    out.reserve(text.size() + text.size() / 32);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) out += '\r';
        out += text[i];
    }
    return widen(out);
}

}  // namespace

void OutputWindow::load(const OutputModel& m) {
    model_ = &m;
    if (loaded()) return;
    create(m.caption(), true);
    const std::string key = placement_key(kName);
    const TwipsRect r = load_placement(c_.settings, key, output_default(primary_screen_twips()));
    place_window_twips(hwnd(), keep_on_screen(r, screens_twips()));
    shown_size_ = 0;
    shown_tail_.clear();
}

void OutputWindow::build() {
    const DWORD edit = ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP;
    make_control(hwnd(), L"STATIC", "", SS_NOPREFIX | SS_LEFTNOWORDWRAP, ids::kTitleLabel, font());
    HWND text = make_control(hwnd(), L"EDIT", "", edit, ids::kOutputText, font(), WS_EX_CLIENTEDGE);
    SendMessageW(text, EM_SETLIMITTEXT, 0, 0);  // no 32 K limit
    make_control(hwnd(), L"BUTTON", "&About", BS_PUSHBUTTON | WS_TABSTOP, ids::kAboutButton,
                 font());
    make_control(hwnd(), L"BUTTON", "O&pen", BS_PUSHBUTTON | WS_TABSTOP, ids::kOpenButton, font());
    make_control(hwnd(), L"BUTTON", "&OK", BS_DEFPUSHBUTTON | WS_TABSTOP, ids::kOkButton, font());
    set_default_button(ids::kOkButton);
}

void OutputWindow::layout(int width, int height) {
    const int title = px_to_twips(line_height(hwnd(), font()), dpi()) + 60;
    const int buttons_top = height - kMargin - kButtonHeight;
    const int text_top = kMargin + title + 60;
    place_twips(item(ids::kTitleLabel), {kMargin, kMargin, width - 2 * kMargin, title}, dpi());
    place_twips(item(ids::kOutputText),
                {kMargin, text_top, width - 2 * kMargin, buttons_top - 120 - text_top}, dpi());
    place_twips(item(ids::kAboutButton), {kMargin, buttons_top, kButtonWidth, kButtonHeight},
                dpi());
    const int ok_left = width - kMargin - kButtonWidth;
    place_twips(item(ids::kOkButton), {ok_left, buttons_top, kButtonWidth, kButtonHeight}, dpi());
    place_twips(item(ids::kOpenButton),
                {ok_left - 120 - kButtonWidth, buttons_top, kButtonWidth, kButtonHeight}, dpi());
}

void OutputWindow::update(const OutputModel& m) {
    load(m);
    if (get_text(hwnd()) != m.caption()) set_text(hwnd(), m.caption());
    set_text(item(ids::kTitleLabel), m.title());
    EnableWindow(item(ids::kOkButton), m.ok_enabled());
    show_text(m);
}

void OutputWindow::show_text(const OutputModel& m) {
    HWND edit = item(ids::kOutputText);
    const std::string& text = m.text();
    const std::size_t tail_from = shown_size_ - shown_tail_.size();
    const bool appended = !m.caret_at_start() && shown_size_ > 0 && text.size() >= shown_size_ &&
                          text.compare(tail_from, shown_tail_.size(), shown_tail_) == 0;
    if (appended) {
        const int end = GetWindowTextLengthW(edit);
        SendMessageW(edit, EM_SETSEL, end, end);
        const std::wstring more = edit_text(std::string_view(text).substr(shown_size_));
        SendMessageW(edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(more.c_str()));
    } else {
        SetWindowTextW(edit, edit_text(text).c_str());
    }
    shown_size_ = text.size();
    shown_tail_ = text.substr(text.size() - std::min(text.size(), kTailSize));
    // The caret: at the start after an insert (the new text on top), else at the end.
    const int caret = m.caret_at_start() ? 0 : GetWindowTextLengthW(edit);
    SendMessageW(edit, EM_SETSEL, caret, caret);
    SendMessageW(edit, EM_SCROLLCARET, 0, 0);
    if (m.caret_at_start()) SendMessageW(edit, WM_VSCROLL, SB_TOP, 0);
}

void OutputWindow::place(const TwipsRect& r) {
    if (!loaded()) return;
    place_window_twips(hwnd(), r);
    RedrawWindow(hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

bool OutputWindow::command(int id, int code) {
    if (code != BN_CLICKED) return false;
    switch (id) {
        case ids::kOkButton:
            hide();
            ok_pressed_ = true;
            return true;
        case ids::kOpenButton:
            open_in_editor();
            return true;
        case ids::kAboutButton:
            show_about(c_, hwnd());
            return true;
        default:
            return false;
    }
}

void OutputWindow::open_in_editor() {
    if (!model_) return;
    std::string name = c_.files.temp_file_name("qlr", false);
    if (name.empty()) return;
    if (const std::size_t dot = name.rfind('.'); dot != std::string::npos) name.resize(dot);
    name += ".txt";
    if (!c_.files.replace_file(name, model_->file_image("\r\n"))) return;
    open_in_notepad(c_, name);
}

void OutputWindow::close_box() {
    const bool ends = model_ && model_->close_ends_program() && visible();
    save_and_unload();
    if (ends) c_.end_requested = true;
    ok_pressed_ = true;  // a modal wait on the window is over
}

// Esc dismisses the window like OK when OK is enabled; it never ends the program.
void OutputWindow::escape() {
    if (IsWindowEnabled(item(ids::kOkButton))) command(ids::kOkButton, BN_CLICKED);
}

void OutputWindow::save_and_unload() {
    if (!loaded()) return;
    if (IsWindowVisible(hwnd())) placed_ = true;
    if (placed_ && normal_state(hwnd()))
        save_placement(c_.settings, placement_key(kName), window_twips(hwnd()));
    placed_ = false;
    unload();
}

}  // namespace quiller::win32
