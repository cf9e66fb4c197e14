#include "ui/question_model.hpp"

#include "ui/host.hpp"

namespace quiller {
namespace {

std::string upper_ascii(std::string_view s) {
    std::string out(s);
    for (char& c : out)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return out;
}

}  // namespace

std::string without_mnemonic(std::string_view caption) {
    std::string out;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] != '&') {
            out += caption[i];
        } else if (i + 1 < caption.size() && caption[i + 1] == '&') {
            out += '&';
            ++i;
        }
    }
    return out;
}

QuestionModel::QuestionModel(const Question& q) : question_(q.question) {
    using namespace question_design;
    if (q.kind == "yesno") {
        label_height_ = kYesNoLabelHeight;
        answer_visible_ = false;
        button1_ = {"&Yes", true, false};
        button2_ = {"&No", true, false};
        if (upper_ascii(q.default_answer) == "YES") {
            button1_.is_default = true;
            tab_order_ = {"Button1", "Button2"};
        } else {
            button2_.is_default = true;
            tab_order_ = {"Button2", "Button1"};
        }
    } else if (q.kind == "text") {
        label_height_ = kTextLabelHeight;
        button1_ = {"&OK", true, true};
        button2_.visible = false;
        button2_.is_default = false;
        password_char_ = q.password_char;
        answer_ = q.default_answer;
        tab_order_ = {"AnswerText", "Button1"};
    }
}

TwipsRect QuestionModel::label_rect() const {
    using namespace question_design;
    return {kMargin, kMargin, kWidth - 2 * kMargin, label_height_};
}

void QuestionModel::press_button1() {
    if (upper_ascii(button1_.caption) != "&OK") answer_ = without_mnemonic(button1_.caption);
}

void QuestionModel::press_button2() {
    answer_ = without_mnemonic(button2_.caption);
}

}  // namespace quiller
