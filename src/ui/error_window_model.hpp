// The error window without a toolkit. For a warning it offers OK (go on), End (end the run) and
// Debug (go on in the debugger); for a fatal error only OK (the run ends). In its file-choosing
// mode, at start-up without a script, it has a file-name field filled with the last script run, a
// Browse button (a file dialog for .prg files), OK and End.
#pragma once

#include <string>
#include <string_view>

namespace quiller {

enum class Severity;
enum class ErrorChoice;

struct ErrorButton {
    std::string caption;  // with its "&" mnemonic
    bool visible = false;
};

class ErrorWindowModel {
  public:
    ErrorWindowModel(Severity severity, std::string_view title, std::string_view text,
                     std::string_view last_script = {});

    const std::string& title() const { return title_; }
    const std::string& text() const { return text_; }
    bool choosing_file() const { return choosing_file_; }
    bool fatal() const { return fatal_; }
    const ErrorButton& ok_button() const { return ok_; }  // always shown, the default
    const ErrorButton& end_button() const { return end_; }
    const ErrorButton& debug_button() const { return debug_; }
    const ErrorButton& browse_button() const { return browse_; }
    // The file dialog's title and filter for Browse.
    static constexpr std::string_view kBrowseTitle = "Choose a .PRG file to run";
    static constexpr std::string_view kBrowseFilter = "Quiller programs (*.prg);;All files (*)";

    // The file-name field; the host keeps it current while the user types or browses.
    const std::string& file_name() const { return file_name_; }
    void set_file_name(std::string name) { file_name_ = std::move(name); }

    // The user's acts. The close box (and Esc) is End in the file-choosing mode and OK otherwise.
    void press_ok() { choice_ = Choice::Ok; }
    void press_end() { choice_ = Choice::End; }
    void press_debug() { choice_ = Choice::Debug; }
    void press_close() { choice_ = choosing_file_ ? Choice::End : Choice::Ok; }

    // What the engine gets back: the choice for a warning or fatal error; the chosen script
    // (empty after End or with an empty field) in the file-choosing mode.
    ErrorChoice choice() const;
    std::string chosen_script() const;

  private:
    enum class Choice { Ok, End, Debug };
    std::string title_;
    std::string text_;
    std::string file_name_;
    bool choosing_file_ = false;
    bool fatal_ = false;
    ErrorButton ok_{"&OK", true};
    ErrorButton end_{"&End", false};
    ErrorButton debug_{"&Debug", false};
    ErrorButton browse_{"&Browse...", false};
    Choice choice_ = Choice::Ok;
};

// The about box's text: product, version, vendor.
std::string about_text(std::string_view version);

}  // namespace quiller
