#include "engine/variables.hpp"

#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller {

std::size_t matching_bracket(std::string_view text, std::size_t start, char closer) {
    const char opener = text[start];
    int depth = 0;
    for (std::size_t i = start + 1; i < text.size(); ++i) {
        if (text[i] == opener) {
            ++depth;
        } else if (text[i] == closer) {
            if (depth == 0) return i;
            --depth;
        }
    }
    return std::string_view::npos;
}

std::string VariableTable::resolve_index(std::string_view name) const {
    const std::size_t open = name.find('[');
    if (open == std::string_view::npos) return std::string(name);
    const std::size_t close = matching_bracket(name, open, ']');
    if (close == std::string_view::npos) return std::string(name);
    std::string_view index = name.substr(open + 1, close - open - 1);
    std::string resolved =
        value::is_numeric(index) ? std::string(index) : get(index, std::string_view{});
    std::string out(name.substr(0, open + 1));
    out += resolved;
    out += name.substr(close);
    return out;
}

std::string VariableTable::prepare_set_name(std::string_view name) const {
    std::string prepared = text::to_lower(resolve_index(name));
    std::string_view trimmed = text::unquote(text::trim(prepared));
    return std::string(trimmed);
}

std::string VariableTable::prepare_get_name(std::string_view name) const {
    if (name.find('[') == std::string_view::npos) return text::to_lower(name);
    return text::to_lower(resolve_index(name));
}

int VariableTable::find(const std::string& prepared) const {
    auto it = index_.find(prepared);
    return it == index_.end() ? -1 : it->second;
}

int VariableTable::set_prepared(const std::string& prepared, std::string_view value) {
    int at = find(prepared);
    if (at >= 0) {
        entries_[at].value = value;
        return at;
    }
    if (count() >= kMaxVariables) return -1;
    entries_.push_back({prepared, std::string(value)});
    at = count() - 1;
    index_.emplace(prepared, at);
    return at;
}

bool VariableTable::set(std::string_view name, std::string_view value) {
    return set_prepared(prepare_set_name(name), value) >= 0;
}

std::string VariableTable::get(std::string_view name, std::string_view default_value) const {
    const int at = find(prepare_get_name(name));
    return at >= 0 ? entries_[at].value : std::string(default_value);
}

}  // namespace quiller
