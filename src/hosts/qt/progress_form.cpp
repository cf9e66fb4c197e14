#include "hosts/qt/progress_form.hpp"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "hosts/qt/status_line.hpp"

namespace quiller::qt {

CopyBar::CopyBar() {
    setObjectName("CopyBar");
    setMinimumHeight(fontMetrics().height() + 8);
}

void CopyBar::set_percent(int percent) {
    if (percent == percent_) return;
    percent_ = percent;
    update();
}

QSize CopyBar::sizeHint() const {
    return {200, fontMetrics().height() + 8};
}

void CopyBar::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const QRect all = rect().adjusted(0, 0, -1, -1);
    const QString text = QString::number(percent_) + "%";
    p.fillRect(rect(), palette().base());
    p.setPen(palette().text().color());
    p.drawText(rect(), Qt::AlignCenter, text);
    // The filled part, with the text drawn again inverted inside it.
    const QRect filled(0, 0, width() * percent_ / 100, height());
    p.save();
    p.setClipRect(filled);
    p.fillRect(filled, palette().highlight());
    p.setPen(palette().highlightedText().color());
    p.drawText(rect(), Qt::AlignCenter, text);
    p.restore();
    p.setPen(palette().mid().color());
    p.drawRect(all);
}

ProgressForm::ProgressForm(ProgressWindow kind) {
    setObjectName(kind == ProgressWindow::Popup ? "frmPopup" : "frmProgress");
    lbl_title = status_line("lblTitle");
    QFont bold = lbl_title->font();
    bold.setBold(true);
    lbl_title->setFont(bold);
    txt_info = status_line("txtInfo");
    txt_progress = status_line("txtProgress");
    copy_bar = new CopyBar;
    copy_bar->setVisible(false);
    lbl_time = status_line("lblTime");
    cmd_cancel = new QPushButton(tr("&Cancel"));
    cmd_cancel->setObjectName("cmdCancel");
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(lbl_time, 1);
    bottom->addWidget(cmd_cancel);
    auto* layout = new QVBoxLayout(this);
    for (QWidget* w : {static_cast<QWidget*>(lbl_title), static_cast<QWidget*>(txt_info),
                       static_cast<QWidget*>(txt_progress), static_cast<QWidget*>(copy_bar)})
        layout->addWidget(w);
    layout->addLayout(bottom);
    layout->addStretch();
    connect(cmd_cancel, &QPushButton::clicked, this, [this] {
        if (on_cancel) on_cancel();
    });
}

void ProgressForm::show_model(const ProgressModel& m) {
    if (m.window == ProgressWindow::Progress) setWindowTitle(tr("Progress Indicator"));
    lbl_title->setText(QString::fromStdString(m.title));
    txt_info->setText(QString::fromStdString(m.info));
    txt_progress->setText(QString::fromStdString(m.progress_text));
    copy_bar->setVisible(m.bar_visible);
    copy_bar->set_percent(m.percent());
    lbl_time->setText(m.bar_visible ? QString::fromStdString(m.time_line()) : QString());
    cmd_cancel->setVisible(m.cancel_visible);
}

// The close box is Cancel; without a Cancel button the window can't be closed by the user.
void ProgressForm::closeEvent(QCloseEvent* event) {
    if (!event->spontaneous()) return event->accept();  // closed by the program
    event->ignore();
    if (cmd_cancel->isVisible() && on_cancel) on_cancel();
}

}  // namespace quiller::qt
