#include "hosts/win32/error_window.hpp"

#include <commdlg.h>

#include "hosts/win32/control_ids.hpp"
#include "hosts/win32/dialog.hpp"
#include "hosts/win32/message_loop.hpp"
#include "hosts/win32/win32_ui.hpp"
#include "os/win32/win32_platform.hpp"
#include "ui/error_window_model.hpp"

namespace quiller::win32 {
namespace {

constexpr int kFieldHeight = 315;

class ErrorWindow final : public Dialog {
  public:
    ErrorWindow(HostContext& c, ErrorWindowModel& m) : c_(c), model_(m) {}

    void run() {
        create(model_.title(), true);
        if (!loaded()) return;
        const TwipsRect screen = primary_screen_twips();
        place_window_twips(hwnd(),
                           question_place(screen, 7800, model_.choosing_file() ? 4200 : 4800));
        relayout();
        show();
        HWND first = item(model_.choosing_file() ? ids::kFileName : ids::kErrorOk);
        SendMessageW(hwnd(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
        run_modal(hwnd(), [&] { return done_ || c_.end_requested; });
    }

  private:
    void build() override {
        const DWORD text = ES_MULTILINE | ES_READONLY | WS_VSCROLL | WS_TABSTOP;
        make_control(hwnd(), L"EDIT", crlf(model_.text()), text, ids::kErrorText, font());
        if (model_.choosing_file()) {
            make_control(hwnd(), L"EDIT", model_.file_name(), ES_AUTOHSCROLL | WS_TABSTOP,
                         ids::kFileName, font(), WS_EX_CLIENTEDGE);
            add_button(ids::kBrowseButton, model_.browse_button(), false);
        }
        add_button(ids::kErrorOk, model_.ok_button(), true);
        add_button(ids::kErrorDebug, model_.debug_button(), false);
        add_button(ids::kErrorEnd, model_.end_button(), false);
        set_default_button(ids::kErrorOk);
    }

    void add_button(int id, const ErrorButton& b, bool is_default) {
        const DWORD style = (is_default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | WS_TABSTOP;
        HWND button = make_control(hwnd(), L"BUTTON", b.caption, style, id, font());
        if (!b.visible) ShowWindow(button, SW_HIDE);
    }

    static std::string crlf(std::string_view text) {
        std::string out;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) out += '\r';
            out += text[i];
        }
        return out;
    }

    void layout(int width, int height) override {
        const int buttons_top = height - kMargin - kButtonHeight;
        int text_bottom = buttons_top - kMargin;
        if (model_.choosing_file()) {
            const int field_top = buttons_top - kMargin - kFieldHeight;
            const int browse_left = width - kMargin - kButtonWidth;
            place_twips(item(ids::kFileName),
                        {kMargin, field_top, browse_left - 120 - kMargin, kFieldHeight}, dpi());
            place_twips(item(ids::kBrowseButton),
                        {browse_left, field_top - 30, kButtonWidth, kButtonHeight}, dpi());
            text_bottom = field_top - kMargin;
        }
        place_twips(item(ids::kErrorText),
                    {kMargin, kMargin, width - 2 * kMargin, text_bottom - kMargin}, dpi());
        // The scroll bar only when the text is longer than the box.
        HWND text = item(ids::kErrorText);
        const auto lines = static_cast<int>(SendMessageW(text, EM_GETLINECOUNT, 0, 0));
        ShowScrollBar(
            text, SB_VERT,
            lines * px_to_twips(line_height(hwnd(), font()), dpi()) > text_bottom - 2 * kMargin);
        // Right-aligned: OK, then Debug and End when shown.
        int left = width - kMargin;
        for (int id : {ids::kErrorEnd, ids::kErrorDebug, ids::kErrorOk}) {
            if (!(GetWindowLongW(item(id), GWL_STYLE) & WS_VISIBLE)) continue;
            left -= kButtonWidth;
            place_twips(item(id), {left, buttons_top, kButtonWidth, kButtonHeight}, dpi());
            left -= 120;
        }
    }

    TwipsRect min_size() const override { return {0, 0, 5400, 2700}; }

    bool command(int id, int code) override {
        if (code != BN_CLICKED) return false;
        switch (id) {
            case ids::kErrorOk:
                take_file_name();
                model_.press_ok();
                break;
            case ids::kErrorEnd:
                model_.press_end();
                break;
            case ids::kErrorDebug:
                model_.press_debug();
                break;
            case ids::kBrowseButton:
                browse();
                return true;
            default:
                return false;
        }
        finish();
        return true;
    }

    void close_box() override {
        take_file_name();
        model_.press_close();
        finish();
    }

    void browse() {
        const std::string file =
            browse_for_file(hwnd(), ErrorWindowModel::kBrowseTitle, ErrorWindowModel::kBrowseFilter,
                            get_text(item(ids::kFileName)));
        if (!file.empty()) set_text(item(ids::kFileName), file);
    }

    void take_file_name() {
        if (model_.choosing_file()) model_.set_file_name(get_text(item(ids::kFileName)));
    }

    void finish() {
        done_ = true;
        hide();
    }

    HostContext& c_;
    ErrorWindowModel& model_;
    bool done_ = false;
};

// "Name (*.prg);;All files (*)" as the file dialog's pairs of "Name (*.prg)\0*.prg\0".
std::wstring dialog_filter(std::string_view filter) {
    std::wstring out;
    while (!filter.empty()) {
        const std::size_t next = filter.find(";;");
        const std::string_view entry = filter.substr(0, next);
        const std::size_t open = entry.rfind('('), close = entry.rfind(')');
        std::string patterns = open != std::string_view::npos && close > open
                                   ? std::string(entry.substr(open + 1, close - open - 1))
                                   : std::string("*");
        for (std::size_t at; (at = patterns.find(' ')) != std::string::npos;) patterns[at] = ';';
        if (patterns == "*") patterns = "*.*";
        out += widen(entry == "All files (*)" ? std::string_view("All files (*.*)") : entry);
        out += L'\0';
        out += widen(patterns);
        out += L'\0';
        if (next == std::string_view::npos) break;
        filter.remove_prefix(next + 2);
    }
    return out;
}

}  // namespace

std::string browse_for_file(HWND owner, std::string_view title, std::string_view filter,
                            std::string_view start) {
    const std::wstring filters = dialog_filter(filter) + L'\0';
    const std::wstring caption = widen(title);
    std::wstring file = widen(start);
    file.resize(32768, L'\0');
    OPENFILENAMEW ofn{};
    ofn.lStructSize = sizeof ofn;
    ofn.hwndOwner = owner;
    ofn.lpstrFilter = filters.c_str();
    ofn.lpstrFile = file.data();
    ofn.nMaxFile = static_cast<DWORD>(file.size());
    ofn.lpstrTitle = caption.c_str();
    ofn.lpstrDefExt = L"prg";
    ofn.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY;
    if (!GetOpenFileNameW(&ofn)) return {};
    return narrow(file.c_str());
}

ErrorChoice show_error_window(HostContext& c, Severity severity, std::string_view title,
                              std::string_view text) {
    ErrorWindowModel model(severity, title, text);
    ErrorWindow(c, model).run();
    return model.choice();
}

std::string choose_script_window(HostContext& c, std::string_view title, std::string_view text,
                                 std::string_view last_script) {
    ErrorWindowModel model(Severity::ChooseFile, title, text, last_script);
    ErrorWindow(c, model).run();
    return model.chosen_script();
}

}  // namespace quiller::win32
