#include "engine/splitter.hpp"

#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller {
namespace {

void wrap(std::string& slot, char quote) {
    slot.insert(slot.begin(), quote);
    slot.push_back(quote);
}

}  // namespace

bool is_quote_character(char c) {
    return c == '"' || c == '\'' || c == '^';
}

// Each argument carries one layer of quotes at most, so a quoted number reads as that number.
void quote_for_set(std::string& slot, int index, bool quoted, char delimiter, bool numeric) {
    if (quoted) {
        wrap(slot, delimiter);
    } else if (numeric) {
        wrap(slot, '"');
    } else if (index == 3 && !slot.empty() &&
               std::string_view("+-*/").find(slot) != std::string_view::npos) {
        wrap(slot, '"');
    }
}

void split_arguments(std::string_view text, bool for_set, Slots& slots, std::string& options,
                     int limit) {
    std::string_view t = text::trim(text);
    options.clear();
    int i = 1;
    while (!t.empty() && t.front() != '{' && i < limit) {
        const char first = t.front();
        const bool quoted = is_quote_character(first);
        std::size_t end;
        if (quoted) {
            t.remove_prefix(1);
            end = t.find(first);
            if (end == std::string_view::npos) continue;  // unclosed: the next character decides
        } else {
            // An unquoted word ends at a blank, or at the end of the text.
            end = t.find(' ');
            if (end == std::string_view::npos) end = t.size();
        }
        std::string& slot = slots[i];
        slot.assign(t.substr(0, end));
        t = end < t.size() ? text::trim(t.substr(end + 1)) : std::string_view{};
        if (for_set) quote_for_set(slot, i, quoted, first, !quoted && value::is_numeric(slot));
        ++i;
    }
    for (; i <= limit && i <= kSlotCount; ++i) slots[i].clear();
    if (!t.empty() && t.front() == '{') {
        if (t.size() >= 2) options.assign(t.substr(1, t.size() - 2));
    }
}

}  // namespace quiller
