// The question window (`AskForm`) without a toolkit: which controls show, their captions, the
// default button, the tab order, the password mask, the label's height and the window's design
// in twips, and what each button leaves as the answer. A host builds its window from this and
// reports the user's acts back.
#pragma once

#include <string>
#include <vector>

#include "ui/window_placement.hpp"

namespace quiller {

struct Question;

struct QuestionButton {
    std::string caption;  // with its "&" mnemonic: "&Yes"
    bool visible = true;
    bool is_default = false;
};

// The window's design (client area, twips). The label grows over the answer box for "yesno".
namespace question_design {
inline constexpr int kWidth = 6000;
inline constexpr int kHeight = 2700;
inline constexpr int kMargin = 120;
inline constexpr int kTextLabelHeight = 735;
inline constexpr int kYesNoLabelHeight = 1935;
inline constexpr TwipsRect kAnswer{120, 975, 5760, 315};
inline constexpr TwipsRect kButton1{3330, 2175, 1215, 375};
inline constexpr TwipsRect kButton2{4665, 2175, 1215, 375};
}  // namespace question_design

class QuestionModel {
  public:
    // `AskUser`'s layout for the request ("text", "yesno"; any other kind keeps the design).
    explicit QuestionModel(const Question& q);

    const std::string& question() const { return question_; }
    int label_height() const { return label_height_; }
    TwipsRect label_rect() const;
    bool answer_visible() const { return answer_visible_; }
    const std::string& password_char() const { return password_char_; }
    // Where the caret stands in the answer box: after the default's last character.
    std::size_t caret() const { return answer_.size(); }
    const QuestionButton& button1() const { return button1_; }
    const QuestionButton& button2() const { return button2_; }
    // Controls by name ("AnswerText", "Button1", "Button2") in tab order; the first has focus.
    const std::vector<std::string>& tab_order() const { return tab_order_; }

    // The answer box's text; the host keeps it current while the user types.
    const std::string& answer() const { return answer_; }
    void set_answer(std::string text) { answer_ = std::move(text); }
    // Button1: a caption other than "&OK" becomes the answer ("Yes"); with "&OK" the typed
    // text stays. Button2: its caption becomes the answer ("No"). Both close the window.
    void press_button1();
    void press_button2();
    // The close box keeps whatever the answer box holds (empty for "yesno").

  private:
    std::string question_;
    std::string answer_;
    std::string password_char_;
    int label_height_ = question_design::kTextLabelHeight;
    bool answer_visible_ = true;
    QuestionButton button1_{"&OK", true, true};
    QuestionButton button2_{"&Cancel", true, false};
    std::vector<std::string> tab_order_{"AnswerText", "Button1", "Button2"};
};

// A caption without its "&" mnemonic marks ("&Yes" gives "Yes"; "&&" gives "&").
std::string without_mnemonic(std::string_view caption);

}  // namespace quiller
