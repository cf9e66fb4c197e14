#include "hosts/qt/debug_form.hpp"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include "ui/host.hpp"

namespace quiller::qt {
namespace {

QLabel* label(const char* name) {
    auto* l = new QLabel;
    l->setObjectName(name);
    l->setTextFormat(Qt::PlainText);
    l->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    l->setMinimumWidth(1);
    return l;
}

QPushButton* button(const QString& caption, const char* name) {
    auto* b = new QPushButton(caption);
    b->setObjectName(name);
    b->setAutoDefault(false);
    return b;
}

QListWidget* list(const char* name) {
    auto* l = new QListWidget;
    l->setObjectName(name);
    l->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    l->setUniformItemSizes(true);                               // long listings stay quick
    l->setSelectionMode(QAbstractItemView::ExtendedSelection);  // Ctrl+C copies the lines
    return l;
}

}  // namespace

DebugForm::DebugForm(DebugModel& model) : model_(model) {
    setObjectName("DebugForm");
    prg_list = list("PrgList");
    var_list = list("VarList");
    pic_splitter = new QSplitter(Qt::Horizontal);
    pic_splitter->setObjectName("picSplitter");
    pic_splitter->addWidget(prg_list);
    pic_splitter->addWidget(var_list);
    pic_splitter->setStretchFactor(0, 3);
    pic_splitter->setStretchFactor(1, 2);
    pic_splitter->setChildrenCollapsible(false);

    num_label = label("NumLabel");
    line_label = label("LineLabel");
    code_label = label("CodeLabel");
    state_label = label("StateLabel");
    state_label->setVisible(false);  // the handshake word, kept for the record
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    line_label->setFont(fixed);
    code_label->setFont(fixed);

    auto* labels = new QGridLayout;
    labels->addWidget(new QLabel(tr("Line:")), 0, 0);
    labels->addWidget(num_label, 0, 1);
    labels->addWidget(new QLabel(tr("As written:")), 1, 0);
    labels->addWidget(line_label, 1, 1);
    labels->addWidget(new QLabel(tr("As run:")), 2, 0);
    labels->addWidget(code_label, 2, 1);
    labels->setColumnStretch(1, 1);

    step_button[debug_button::kStep] = button(tr("&Step"), "StepButton0");
    step_button[debug_button::kTerminate] = button(tr("&Terminate"), "StepButton1");
    step_button[debug_button::kContinue] = button(tr("&Continue"), "StepButton2");
    step_button[debug_button::kStep]->setDefault(true);
    cmd_edit = button(tr("&Edit"), "cmdEdit");
    cmd_reference = button(tr("&Reference"), "cmdReference");
    about_button = button(tr("&About"), "AboutButton");
    auto* buttons = new QHBoxLayout;
    for (int i : {debug_button::kStep, debug_button::kContinue, debug_button::kTerminate})
        buttons->addWidget(step_button[static_cast<std::size_t>(i)]);
    buttons->addStretch();
    buttons->addWidget(cmd_edit);
    buttons->addWidget(cmd_reference);
    buttons->addWidget(about_button);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pic_splitter, 1);
    layout->addLayout(labels);
    layout->addWidget(state_label);
    layout->addLayout(buttons);

    for (int i = 0; i < 3; ++i)
        connect(step_button[static_cast<std::size_t>(i)], &QPushButton::clicked, this, [this, i] {
            model_.press(i);
            state_label->setText(QString::fromStdString(model_.state()));
            if (on_step_button) on_step_button(i);
        });
    connect(cmd_edit, &QPushButton::clicked, this, [this] {
        if (on_edit) on_edit();
    });
    connect(cmd_reference, &QPushButton::clicked, this, [this] {
        if (on_reference) on_reference();
    });
    connect(about_button, &QPushButton::clicked, this, [this] {
        if (on_about) on_about();
    });
}

void DebugForm::show_view(const DebugView& view) {
    model_.show(view);
    setWindowTitle(QString::fromStdString(view.caption));
    if (view.listing && *view.listing != shown_listing_) {  // a `load` changed the program
        shown_listing_ = *view.listing;
        prg_list->clear();
        QStringList lines;
        lines.reserve(static_cast<int>(shown_listing_.size()));
        for (const std::string& l : shown_listing_) lines << QString::fromStdString(l);
        prg_list->addItems(lines);
    }
    var_list->clear();
    QStringList vars;
    for (const std::string& v : view.variables) vars << QString::fromStdString(v);
    var_list->addItems(vars);
    num_label->setText(QString::fromStdString(model_.num_label()));
    line_label->setText(QString::fromStdString(model_.line_label()));
    code_label->setText(QString::fromStdString(model_.code_label()));
    state_label->setText("Wait");
    if (QListWidgetItem* item = prg_list->item(model_.selected_row())) {
        prg_list->setCurrentItem(item);
        prg_list->scrollToItem(item, QAbstractItemView::PositionAtCenter);
    }
    step_button[debug_button::kStep]->setFocus();
}

// The close box lets the script run on, as Continue does.
void DebugForm::closeEvent(QCloseEvent* event) {
    if (event->spontaneous() && model_.state() == "Wait") {
        model_.press(debug_button::kContinue);
        if (on_step_button) on_step_button(debug_button::kContinue);
    }
    event->accept();
}

}  // namespace quiller::qt
