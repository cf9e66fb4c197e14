// `DisplayForm`, the output window: `TitleLabel` over the read-only `OutputText`, with `OKButton`
// (hides the window), `OpenButton` (the text in the desktop's text editor) and `cmdAbout`.
#pragma once

#include <QWidget>
#include <functional>
#include <string>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace quiller {
class OutputModel;
}

namespace quiller::qt {

class DisplayForm final : public QWidget {
  public:
    DisplayForm();

    // Shows the model's title, caption, OK state and text (after an append only the new text
    // is added, so long outputs stay quick).
    void show_model(const OutputModel& m);

    QLabel* title_label;
    QPlainTextEdit* output_text;
    QPushButton* ok_button;
    QPushButton* open_button;
    QPushButton* about_button;

    std::function<void()> on_ok;
    // The close box; the window closes either way.
    std::function<void()> on_close;

  protected:
    void closeEvent(QCloseEvent* event) override;
    // Enter presses the default button OK; so does Esc, which must not end the program as the
    // close box does.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    std::size_t shown_size_ = 0;  // how much of the model's text the editor holds
    unsigned shown_rewrites_ = 0;
};

}  // namespace quiller::qt
