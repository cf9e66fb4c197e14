#include "hosts/qt/display_form.hpp"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "ui/output_model.hpp"

namespace quiller::qt {

DisplayForm::DisplayForm() {
    setObjectName("DisplayForm");
    title_label = new QLabel;
    title_label->setObjectName("TitleLabel");
    title_label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    title_label->setWordWrap(true);
    QFont bold = title_label->font();
    bold.setBold(true);
    title_label->setFont(bold);
    output_text = new QPlainTextEdit;
    output_text->setObjectName("OutputText");
    output_text->setReadOnly(true);
    output_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    output_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    output_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    ok_button = new QPushButton(tr("&OK"));
    ok_button->setObjectName("OKButton");
    ok_button->setDefault(true);
    ok_button->setAutoDefault(true);
    open_button = new QPushButton(tr("O&pen"));
    open_button->setObjectName("OpenButton");
    open_button->setToolTip(tr("Open the output in the text editor"));
    about_button = new QPushButton(tr("&About"));
    about_button->setObjectName("cmdAbout");

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(open_button);
    buttons->addWidget(about_button);
    buttons->addStretch();
    buttons->addWidget(ok_button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title_label);
    layout->addWidget(output_text, 1);
    layout->addLayout(buttons);
    setTabOrder(ok_button, output_text);
    setTabOrder(output_text, open_button);
    setTabOrder(open_button, about_button);

    connect(ok_button, &QPushButton::clicked, this, [this] {
        if (on_ok) on_ok();
    });
}

void DisplayForm::show_model(const OutputModel& m) {
    setWindowTitle(QString::fromStdString(m.caption()));
    title_label->setText(QString::fromStdString(m.title()));
    title_label->setVisible(!m.title().empty());
    ok_button->setEnabled(m.ok_enabled());
    const std::string& text = m.text();
    const bool appended = text.size() >= shown_size_ && m.rewrites() == shown_rewrites_;
    if (appended && text.size() > shown_size_) {
        QTextCursor end(output_text->document());
        end.movePosition(QTextCursor::End);
        end.insertText(QString::fromStdString(text.substr(shown_size_)));
    } else if (!appended) {
        output_text->setPlainText(QString::fromStdString(text));
    }
    shown_size_ = text.size();
    shown_rewrites_ = m.rewrites();
    QTextCursor caret(output_text->document());
    caret.movePosition(m.caret_at_start() ? QTextCursor::Start : QTextCursor::End);
    output_text->setTextCursor(caret);
    output_text->ensureCursorVisible();
}

void DisplayForm::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Escape:
            if (ok_button->isEnabled()) ok_button->click();
            return;
        default:
            QWidget::keyPressEvent(event);
    }
}

void DisplayForm::closeEvent(QCloseEvent* event) {
    if (on_close) on_close();
    event->accept();
}

}  // namespace quiller::qt
