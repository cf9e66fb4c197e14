// `CopyForm`, a status window (`TitleLabel`, `PathLabel`, `FileLabel`, `OutputText`) that no
// statement opens; it keeps its placement and window state under its own key.
#pragma once

#include <QWidget>

#include "hosts/qt/placement.hpp"

class QLabel;
class QPlainTextEdit;

namespace quiller::qt {

class CopyForm final : public QWidget {
  public:
    explicit CopyForm(SettingsStore& store);

    // Opens at the stored placement and window state (default: 300 twips above the centre).
    void open();

    QLabel* title_label;
    QLabel* path_label;
    QLabel* file_label;
    QPlainTextEdit* output_text;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    WindowPlacement placement_;
};

}  // namespace quiller::qt
