#include "hosts/qt/error_form.hpp"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace quiller::qt {
namespace {

QPushButton* make_button(const ErrorButton& b, const char* name) {
    auto* button = new QPushButton(QString::fromStdString(b.caption));
    button->setObjectName(name);
    button->setVisible(b.visible);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

ErrorForm::ErrorForm(ErrorWindowModel& model, bool native_dialogs)
    : model_(model), native_dialogs_(native_dialogs) {
    setObjectName("ErrorForm");
    setWindowTitle(QString::fromStdString(model.title()));
    const QStyle::StandardPixmap icon_kind = model.choosing_file() ? QStyle::SP_MessageBoxQuestion
                                             : model.fatal()       ? QStyle::SP_MessageBoxCritical
                                                                   : QStyle::SP_MessageBoxWarning;
    auto* icon = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(icon_kind, nullptr, this).pixmap(size, size));
    icon->setAlignment(Qt::AlignTop);
    message_label = new QLabel(QString::fromStdString(model.text()));
    message_label->setObjectName("MessageLabel");
    message_label->setTextFormat(Qt::PlainText);
    message_label->setWordWrap(true);
    message_label->setTextInteractionFlags(Qt::TextSelectableByMouse |
                                           Qt::TextSelectableByKeyboard);
    message_label->setMinimumWidth(420);

    file_name = new QLineEdit(QString::fromStdString(model.file_name()));
    file_name->setObjectName("FileName");
    file_name->setVisible(model.choosing_file());
    browse_button = make_button(model.browse_button(), "BrowseButton");
    ok_button = make_button(model.ok_button(), "OKButton");
    ok_button->setDefault(true);
    end_button = make_button(model.end_button(), "EndButton");
    debug_button = make_button(model.debug_button(), "DebugButton");

    auto* top = new QHBoxLayout;
    top->addWidget(icon);
    top->addWidget(message_label, 1);
    auto* file_row = new QHBoxLayout;
    file_row->addWidget(file_name, 1);
    file_row->addWidget(browse_button);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok_button);
    buttons->addWidget(debug_button);
    buttons->addWidget(end_button);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(file_row);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetMinimumSize);
    (model.choosing_file() ? static_cast<QWidget*>(file_name) : ok_button)->setFocus();

    connect(file_name, &QLineEdit::textChanged, this,
            [this](const QString& t) { model_.set_file_name(t.toStdString()); });
    connect(browse_button, &QPushButton::clicked, this, [this] { browse(); });
    connect(ok_button, &QPushButton::clicked, this, [this] {
        model_.press_ok();
        accept();
    });
    connect(end_button, &QPushButton::clicked, this, [this] {
        model_.press_end();
        done(QDialog::Rejected);
    });
    connect(debug_button, &QPushButton::clicked, this, [this] {
        model_.press_debug();
        accept();
    });
}

void ErrorForm::reject() {
    model_.press_close();
    QDialog::reject();
}

void ErrorForm::browse() {
    const QFileInfo current(file_name->text());
    const QString chosen = QFileDialog::getOpenFileName(
        this,
        QString::fromUtf8(ErrorWindowModel::kBrowseTitle.data(),
                          static_cast<int>(ErrorWindowModel::kBrowseTitle.size())),
        current.absolutePath(),
        QString::fromUtf8(ErrorWindowModel::kBrowseFilter.data(),
                          static_cast<int>(ErrorWindowModel::kBrowseFilter.size())),
        nullptr, native_dialogs_ ? QFileDialog::Options() : QFileDialog::DontUseNativeDialog);
    if (!chosen.isEmpty()) file_name->setText(chosen);
}

}  // namespace quiller::qt
