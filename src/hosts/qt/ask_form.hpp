// `AskForm`, the question window: `QuestionLabel`, `AnswerText`, `Button1` and `Button2`, laid
// out as the question model says (design sizes in twips).
#pragma once

#include <QDialog>

#include "ui/question_model.hpp"

class QLabel;
class QLineEdit;
class QPushButton;

namespace quiller::qt {

class AskForm final : public QDialog {
  public:
    AskForm(QuestionModel& model, const std::string& caption);

    QLabel* question_label;
    QLineEdit* answer_text;
    QPushButton* button1;
    QPushButton* button2;

  private:
    QuestionModel& model_;
};

}  // namespace quiller::qt
