// The output window (`DisplayForm`) as the engine keeps it: the title line, the text, the caret,
// the caption and whether the window is visible, with the rules of `ShowOutput`, the modal pause,
// the timed pause's countdown and the end of a run. `print`, `pause` and `printtofile` work on
// this model; hosts only show it.
#pragma once

#include <string>
#include <string_view>

namespace quiller {

class OutputModel {
  public:
    explicit OutputModel(std::string_view line_break = "\n") : line_break_(line_break) {}

    // `ShowOutput` without showing: loads the window, enables OK, applies clear, title and
    // insert/append and places the caret. Callers decide visibility (a print shows the window,
    // a pause holds it modally).
    void show(std::string_view title, std::string_view text, bool clear, bool insert);

    const std::string& title() const { return title_; }
    const std::string& text() const { return text_; }
    bool loaded() const { return loaded_; }
    bool visible() const { return visible_; }
    void set_visible(bool v) { visible_ = v; }
    void set_title(std::string_view t) { title_ = t; }
    // After an insert the caret stands at the start (the new text on top in view); otherwise at
    // the end, so that the last line is in view.
    bool caret_at_start() const { return caret_at_start_; }
    bool ok_enabled() const { return ok_enabled_; }
    // Counts the changes that were more than an append (clear, insert), so that a window can
    // add only the new text after a plain append.
    unsigned rewrites() const { return rewrites_; }
    void set_ok_enabled(bool on) { ok_enabled_ = on; }
    // The window's caption ("Quiller v0.1.0"; the end of a run appends " - Program Finished").
    const std::string& caption() const { return caption_; }
    void set_caption(std::string_view c) { caption_ = c; }

    // The modal pause: a hidden window shows the message as its title too; the window is shown
    // (modally, by the host) with OK enabled. Returns whether it was visible before, which
    // `end_modal` restores.
    bool begin_modal(std::string_view message);
    void end_modal(bool was_visible) { visible_ = was_visible; }

    // The timed pause's caption for `n` seconds left: "7 :  Quiller v0.1.0".
    static std::string countdown_caption(int n, std::string_view caption);
    // Timed pauses of fewer seconds sleep without a countdown and can't be cut short.
    static constexpr int kCountdownFrom = 6;

    // End of the run with the window visible: " - Program Finished" appended, OK enabled.
    void finish();

    // The close box (not OK) ends the whole program when the window is visible at that moment.
    bool close_ends_program() const { return visible_; }

    // What `printtofile` writes: the title line when there is one, then the text.
    std::string file_image(std::string_view line_break) const;

  private:
    std::string line_break_;
    std::string title_;
    std::string caption_;
    std::string text_;
    bool loaded_ = false;
    bool visible_ = false;
    bool caret_at_start_ = false;
    bool ok_enabled_ = false;
    unsigned rewrites_ = 0;
};

}  // namespace quiller
