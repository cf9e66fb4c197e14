#include "hosts/qt/copy_form.hpp"

#include <QCloseEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "hosts/qt/status_line.hpp"

namespace quiller::qt {

CopyForm::CopyForm(SettingsStore& store) : placement_(store, placement_key("CopyForm")) {
    setObjectName("CopyForm");
    title_label = status_line("TitleLabel");
    path_label = status_line("PathLabel");
    file_label = status_line("FileLabel");
    output_text = new QPlainTextEdit;
    output_text->setObjectName("OutputText");
    output_text->setReadOnly(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title_label);
    layout->addWidget(path_label);
    layout->addWidget(file_label);
    layout->addWidget(output_text, 1);
}

void CopyForm::open() {
    placement_.restore(*this, question_place(primary_screen(), 7200, 4800));
    const int state = load_window_state(placement_.store(), placement_.key());
    if (state == 2)
        showMaximized();
    else if (state == 1)
        showMinimized();
    else
        show();
}

void CopyForm::closeEvent(QCloseEvent* event) {
    const Qt::WindowStates s = windowState();
    const int state = s & Qt::WindowMinimized ? 1 : s & Qt::WindowMaximized ? 2 : 0;
    placement_.save(*this);
    save_window_state(placement_.store(), placement_.key(), state);
    event->accept();
}

}  // namespace quiller::qt
