// The progress windows `frmPopup` and `frmProgress`: `lblTitle`, `txtInfo`, `txtProgress`, the
// bar `CopyBar` with its centred percent text, `lblTime` and `cmdCancel`.
#pragma once

#include <QWidget>
#include <functional>

#include "ui/progress_model.hpp"

class QLabel;
class QPushButton;

namespace quiller::qt {

// The bar: the percent text centred, the filled part drawn in the highlight colour with the
// text inverted where it covers it, so the text stays readable.
class CopyBar final : public QWidget {
  public:
    CopyBar();
    void set_percent(int percent);
    int percent() const { return percent_; }
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    int percent_ = 0;
};

class ProgressForm final : public QWidget {
  public:
    explicit ProgressForm(ProgressWindow kind);

    void show_model(const ProgressModel& m);

    QLabel* lbl_title;
    QLabel* txt_info;
    QLabel* txt_progress;
    CopyBar* copy_bar;
    QLabel* lbl_time;
    QPushButton* cmd_cancel;

    std::function<void()> on_cancel;

  protected:
    void closeEvent(QCloseEvent* event) override;
};

}  // namespace quiller::qt
