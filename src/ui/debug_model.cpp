#include "ui/debug_model.hpp"

#include <algorithm>

#include "ui/host.hpp"
#include "value/format.hpp"

namespace quiller {

std::vector<std::string> debug_listing(const std::vector<ListingLine>& lines) {
    std::vector<std::string> out;
    out.reserve(lines.size());
    int depth = 0;
    int number = 0;
    for (const ListingLine& l : lines) {
        if (l.outdent_before && depth > 0) --depth;
        std::string entry = value::format_number(++number, "00# ");
        entry.append(static_cast<std::size_t>(depth) * 4, ' ');
        entry += l.keyword;
        if (!l.arguments.empty()) {
            entry += ' ';
            entry += l.arguments;
        }
        out.push_back(std::move(entry));
        if (l.indent_after) ++depth;
    }
    return out;
}

void DebugModel::show(const DebugView& view) {
    num_label_ = std::to_string(view.current_line);
    selected_row_ = view.current_line - 1;
    line_label_.clear();
    if (view.listing && selected_row_ >= 0 &&
        selected_row_ < static_cast<int>(view.listing->size())) {
        // The listing's entry without its number and indentation.
        const std::string& entry = (*view.listing)[static_cast<std::size_t>(selected_row_)];
        const std::size_t text = entry.find_first_not_of(' ', entry.find(' '));
        line_label_ = text == std::string::npos ? std::string() : entry.substr(text);
    }
    code_label_ = view.line_text;
}

int DebugModel::top_row(int current_row, int visible, int top, int rows) {
    if (visible <= 0) return std::max(current_row, 0);
    if (current_row >= top && current_row < top + visible) return top;
    const int wanted = current_row - visible / 3;
    return std::clamp(wanted, 0, std::max(rows - visible, 0));
}

void DebugModel::press(int index) {
    switch (index) {
        case debug_button::kStep:
            state_ = "Step";
            break;
        case debug_button::kTerminate:
            state_ = "Terminate";
            break;
        case debug_button::kContinue:
            state_ = "Continue";
            break;
        default:
            break;
    }
}

DebugAction DebugModel::wait(const EventWait& w) {
    state_ = "Wait";
    for (;;) {
        w.process_events();
        if (state_ != "Wait") break;
        w.sleep_ms(kEventSliceMs);
    }
    if (state_ == "Continue") return DebugAction::Continue;
    if (state_ == "Terminate") return DebugAction::Terminate;
    return DebugAction::Step;
}

}  // namespace quiller
