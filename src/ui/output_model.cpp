#include "ui/output_model.hpp"

namespace quiller {

void OutputModel::show(std::string_view title, std::string_view text, bool clear, bool insert) {
    loaded_ = true;
    ok_enabled_ = true;
    if (clear || insert) ++rewrites_;
    if (clear) text_.clear();
    const std::string_view separator = text_.empty() ? std::string_view{} : line_break_;
    if (!title.empty()) title_ = title;
    if (insert) {
        std::string content(text);
        content += separator;
        content += text_;
        text_ = std::move(content);
    } else if (!text.empty()) {
        text_ += separator;
        text_ += text;
    }
    caret_at_start_ = insert;
}

bool OutputModel::begin_modal(std::string_view message) {
    const bool was_visible = visible_;
    if (!was_visible) title_ = message;
    ok_enabled_ = true;
    visible_ = true;
    return was_visible;
}

std::string OutputModel::countdown_caption(int n, std::string_view caption) {
    std::string c = std::to_string(n) + " :  ";
    c += caption;
    return c;
}

void OutputModel::finish() {
    caption_ += " - Program Finished";
    ok_enabled_ = true;
}

std::string OutputModel::file_image(std::string_view line_break) const {
    std::string image;
    if (!title_.empty()) {
        image += title_;
        image += line_break;
    }
    image += text_;
    image += line_break;
    return image;
}

}  // namespace quiller
