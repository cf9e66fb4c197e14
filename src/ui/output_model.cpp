#include "ui/output_model.hpp"

namespace quiller {

void OutputModel::show(std::string_view title, std::string_view text, bool clear, bool insert) {
    loaded_ = true;
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
