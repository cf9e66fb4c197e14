#include "engine/variables.hpp"

#include <vector>

#include "value/text.hpp"
#include "value/value.hpp"
#include "engine/failure.hpp"

namespace quiller {

namespace {

// The closer of every "[" of a name, found in one pass (npos for an opener without one). The
// pair found this way for an inner index is the one the bracket search finds within it.
std::vector<std::size_t> bracket_pairs(std::string_view name) {
    std::vector<std::size_t> closer(name.size(), std::string_view::npos);
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == '[') {
            open.push_back(i);
        } else if (name[i] == ']' && !open.empty()) {
            closer[open.back()] = i;
            open.pop_back();
        }
    }
    return closer;
}

// One level of index notation: the part [begin, end) of the name whose first "[" at `open`
// pairs with the "]" at `close`.
struct IndexLevel {
    std::size_t begin, end, open, close;
};

}  // namespace

// Index notation nests (list[a[b[1]]]): each non-numeric index is a variable name that is
// resolved in turn. The levels are collected first and resolved from the innermost out, so a
// script's nesting depth never becomes the depth of the C++ stack.
std::string VariableTable::resolve_index(std::string_view name) const {
    if (name.find('[') == std::string_view::npos) return std::string(name);
    const std::vector<std::size_t> closer = bracket_pairs(name);
    std::vector<IndexLevel> levels;
    bool numeric_last = false;
    for (std::size_t begin = 0, end = name.size();;) {
        const std::size_t open = name.find('[', begin);
        if (open >= end || closer[open] >= end) break;
        levels.push_back({begin, end, open, closer[open]});
        if (value::is_numeric(name.substr(open + 1, closer[open] - open - 1))) {
            numeric_last = true;
            break;
        }
        begin = open + 1;
        end = closer[open];
    }
    if (levels.empty()) return std::string(name);

    auto lookup = [this](const std::string& prepared) -> std::string_view {
        const int at = find(prepared);
        return at >= 0 ? std::string_view(entries_[at].value) : std::string_view();
    };
    auto rebuild = [&](const IndexLevel& l, std::string_view index) {
        std::string out(name.substr(l.begin, l.open + 1 - l.begin));
        out += index;
        out += name.substr(l.close, l.end - l.close);
        return out;
    };
    const IndexLevel& last = levels.back();
    std::string resolved = numeric_last
                               ? std::string(name.substr(last.begin, last.end - last.begin))
                               : rebuild(last, lookup(text::to_lower(name.substr(
                                                   last.open + 1, last.close - last.open - 1))));
    for (std::size_t j = levels.size() - 1; j-- > 0;)
        resolved = rebuild(levels[j], lookup(text::to_lower(resolved)));
    return resolved;
}

void VariableTable::check_length(std::size_t length) const {
    if (length > text_limit_) throw failures::out_of_string_space();
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
    check_length(value.size());
    int at = find(prepared);
    if (at >= 0) {
        entries_[at].value = value;
        entries_[at].facts.forget();
        return at;
    }
    if (count() >= kMaxVariables) return -1;
    entries_.push_back({prepared, std::string(value), {}});
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
