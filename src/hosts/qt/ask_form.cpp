#include "hosts/qt/ask_form.hpp"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "hosts/qt/placement.hpp"

namespace quiller::qt {
namespace {

void place(QWidget* w, const TwipsRect& r) {
    w->setGeometry(to_pixels(r.left), to_pixels(r.top), to_pixels(r.width), to_pixels(r.height));
}

QPushButton* make_button(QWidget* parent, const char* name, const QuestionButton& b,
                         const TwipsRect& r) {
    auto* button = new QPushButton(QString::fromStdString(b.caption), parent);
    button->setObjectName(name);
    button->setVisible(b.visible);
    button->setDefault(b.is_default);
    button->setAutoDefault(b.is_default);
    place(button, r);
    return button;
}

}  // namespace

AskForm::AskForm(QuestionModel& model, const std::string& caption) : model_(model) {
    using namespace question_design;
    setObjectName("AskForm");
    setWindowTitle(QString::fromStdString(caption));
    setFixedSize(to_pixels(kWidth), to_pixels(kHeight));

    question_label = new QLabel(QString::fromStdString(model.question()), this);
    question_label->setObjectName("QuestionLabel");
    question_label->setWordWrap(true);
    question_label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    question_label->setTextFormat(Qt::PlainText);
    question_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    place(question_label, model.label_rect());

    answer_text = new QLineEdit(QString::fromStdString(model.answer()), this);
    answer_text->setObjectName("AnswerText");
    answer_text->setVisible(model.answer_visible());
    if (!model.password_char().empty()) answer_text->setEchoMode(QLineEdit::Password);
    answer_text->setCursorPosition(answer_text->text().size());
    place(answer_text, kAnswer);

    button1 = make_button(this, "Button1", model.button1(), kButton1);
    button2 = make_button(this, "Button2", model.button2(), kButton2);

    // Tab order and first focus as the model lists them.
    std::vector<QWidget*> order;
    for (const std::string& name : model.tab_order())
        order.push_back(name == "AnswerText" ? static_cast<QWidget*>(answer_text)
                        : name == "Button1"  ? button1
                                             : button2);
    for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
    if (!order.empty()) order.front()->setFocus();

    connect(answer_text, &QLineEdit::textEdited, this,
            [this](const QString& t) { model_.set_answer(t.toStdString()); });
    connect(button1, &QPushButton::clicked, this, [this] {
        model_.press_button1();
        accept();
    });
    connect(button2, &QPushButton::clicked, this, [this] {
        model_.press_button2();
        accept();
    });
}

}  // namespace quiller::qt
