// The error window: the message with OK, End and Debug for a warning, OK for a fatal error; in
// its file-choosing mode a file-name field with Browse (a file dialog for .prg files), OK and End.
#pragma once

#include <QDialog>

#include "ui/error_window_model.hpp"

class QLabel;
class QLineEdit;
class QPushButton;

namespace quiller::qt {

class ErrorForm final : public QDialog {
  public:
    // `native_dialogs` false uses Qt's own file dialog (tests, and desktops without a portal).
    ErrorForm(ErrorWindowModel& model, bool native_dialogs);

    QLabel* message_label;
    QLineEdit* file_name;
    QPushButton* ok_button;
    QPushButton* end_button;
    QPushButton* debug_button;
    QPushButton* browse_button;

  protected:
    void reject() override;  // Esc and the close box

  private:
    void browse();

    ErrorWindowModel& model_;
    bool native_dialogs_;
};

}  // namespace quiller::qt
