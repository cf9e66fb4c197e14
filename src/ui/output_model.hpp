// The output window's content as the engine keeps it: the title line, the text and whether the
// window is visible. `print`, `pause` and `printtofile` work on this model; hosts only show it.
#pragma once

#include <string>
#include <string_view>

namespace quiller {

class OutputModel {
  public:
    explicit OutputModel(std::string_view line_break = "\n") : line_break_(line_break) {}

    // `ShowOutput` without showing: loads the window, applies clear, title and insert/append.
    // Callers decide visibility (a print shows the window, a pause holds it modally).
    void show(std::string_view title, std::string_view text, bool clear, bool insert);

    const std::string& title() const { return title_; }
    const std::string& text() const { return text_; }
    bool loaded() const { return loaded_; }
    bool visible() const { return visible_; }
    void set_visible(bool v) { visible_ = v; }
    void set_title(std::string_view t) { title_ = t; }
    // The window's caption ("Quiller v0.1.0"; the end of a run appends " - Program Finished").
    const std::string& caption() const { return caption_; }
    void set_caption(std::string_view c) { caption_ = c; }

    // What `printtofile` writes: the title line when there is one, then the text.
    std::string file_image(std::string_view line_break) const;

  private:
    std::string line_break_;
    std::string title_;
    std::string caption_;
    std::string text_;
    bool loaded_ = false;
    bool visible_ = false;
};

}  // namespace quiller
