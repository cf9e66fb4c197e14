#include "hosts/win32/question_window.hpp"

#include "hosts/win32/control_ids.hpp"
#include "hosts/win32/dialog.hpp"
#include "hosts/win32/message_loop.hpp"
#include "hosts/win32/win32_ui.hpp"
#include "os/win32/win32_platform.hpp"
#include "ui/question_model.hpp"

namespace quiller::win32 {
namespace {

class QuestionWindow final : public Dialog {
  public:
    QuestionWindow(HostContext& c, const Question& q) : c_(c), q_(q), model_(q) {}

    std::string ask() {
        create(q_.caption, false);
        if (!loaded()) return model_.answer();
        size_and_place();
        show();
        focus_first();
        run_modal(hwnd(), [&] { return answered_ || c_.end_requested; });
        return model_.answer();
    }

  private:
    void build() override {
        make_control(hwnd(), L"STATIC", model_.question(), SS_NOPREFIX, ids::kQuestionLabel,
                     font());
        // Created in the model's tab order: the dialog manager tabs in creation order.
        for (const std::string& name : model_.tab_order()) {
            if (name == "AnswerText") add_answer();
            if (name == "Button1") add_button(ids::kButton1, model_.button1());
            if (name == "Button2") add_button(ids::kButton2, model_.button2());
        }
        if (!item(ids::kAnswerText)) add_answer();
        if (!item(ids::kButton2)) add_button(ids::kButton2, model_.button2());
    }

    void add_answer() {
        DWORD style = ES_AUTOHSCROLL | WS_TABSTOP | (model_.answer_visible() ? 0 : WS_DISABLED);
        HWND edit = make_control(hwnd(), L"EDIT", model_.answer(), style, ids::kAnswerText, font(),
                                 WS_EX_CLIENTEDGE);
        if (!model_.password_char().empty())
            SendMessageW(edit, EM_SETPASSWORDCHAR, static_cast<WPARAM>(model_.password_char()[0]),
                         0);
        if (!model_.answer_visible()) ShowWindow(edit, SW_HIDE);
        const auto caret = static_cast<WPARAM>(GetWindowTextLengthW(edit));
        SendMessageW(edit, EM_SETSEL, caret, static_cast<LPARAM>(caret));
    }

    void add_button(int id, const QuestionButton& b) {
        const DWORD style = (b.is_default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON) | WS_TABSTOP;
        HWND button = make_control(hwnd(), L"BUTTON", b.caption, style, id, font());
        if (!b.visible) ShowWindow(button, SW_HIDE);
        if (b.is_default) set_default_button(id);
    }

    void layout(int, int) override {
        using namespace question_design;
        place_twips(item(ids::kQuestionLabel), model_.label_rect(), dpi());
        place_twips(item(ids::kAnswerText), kAnswer, dpi());
        place_twips(item(ids::kButton1), kButton1, dpi());
        place_twips(item(ids::kButton2), kButton2, dpi());
    }

    // The design's client area, centred and raised as the question window is.
    void size_and_place() {
        RECT r{0, 0, twips_to_px(question_design::kWidth, dpi()),
               twips_to_px(question_design::kHeight, dpi())};
        AdjustWindowRectEx(&r, GetWindowLongW(hwnd(), GWL_STYLE), FALSE,
                           GetWindowLongW(hwnd(), GWL_EXSTYLE));
        const int sys = system_dpi();
        const TwipsRect place =
            question_place(primary_screen_twips(), px_to_twips(r.right - r.left, sys),
                           px_to_twips(r.bottom - r.top, sys));
        place_window_twips(hwnd(), place);
        relayout();
    }

    void focus_first() {
        for (const std::string& name : model_.tab_order()) {
            const int id = name == "AnswerText" ? ids::kAnswerText
                           : name == "Button1"  ? ids::kButton1
                                                : ids::kButton2;
            HWND h = item(id);
            if (h && IsWindowVisible(h) && IsWindowEnabled(h)) {
                SendMessageW(hwnd(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(h), TRUE);
                // The dialog manager selects an edit's text; the caret goes after the default.
                if (id == ids::kAnswerText)
                    SendMessageW(h, EM_SETSEL, static_cast<WPARAM>(GetWindowTextLengthW(h)),
                                 GetWindowTextLengthW(h));
                return;
            }
        }
    }

    bool command(int id, int code) override {
        if (code != BN_CLICKED) return false;
        if (id == ids::kButton1) {
            take_typed();
            model_.press_button1();
        } else if (id == ids::kButton2) {
            take_typed();
            model_.press_button2();
        } else {
            return false;
        }
        finish();
        return true;
    }

    // The close box keeps what the answer box holds.
    void close_box() override {
        take_typed();
        finish();
    }

    void take_typed() {
        if (model_.answer_visible()) model_.set_answer(get_text(item(ids::kAnswerText)));
    }

    void finish() {
        answered_ = true;
        hide();
    }

    HostContext& c_;
    const Question& q_;
    QuestionModel model_;
    bool answered_ = false;
};

}  // namespace

std::string ask_question(HostContext& c, const Question& q) {
    QuestionWindow w(c, q);
    return w.ask();
}

}  // namespace quiller::win32
