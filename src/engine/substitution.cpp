#include "engine/substitution.hpp"

#include "value/text.hpp"
#include "engine/failure.hpp"
#include "engine/variables.hpp"

namespace quiller {

SubstitutionResult replace_references(char delimiter, std::string_view text,
                                      const NameLookup& lookup, std::size_t limit) {
    SubstitutionResult result{std::string(text)};
    std::string& t = result.text;
    std::size_t p = t.find(delimiter);
    while (p != std::string::npos) {
        if (p + 1 < t.size() && t[p + 1] == delimiter) {
            t.erase(p, 1);
            p = t.find(delimiter, p + 1);
            continue;
        }
        const std::size_t q = t.find(delimiter, p + 1);
        if (q == std::string::npos) {
            result.unclosed = true;
            return result;
        }
        const std::string value = lookup(std::string_view(t).substr(p + 1, q - p - 1));
        if (t.size() - (q - p + 1) + value.size() > limit) throw failures::out_of_string_space();
        t.replace(p, q - p + 1, value);
        p = t.find(delimiter, p + value.size());
    }
    return result;
}

void SubstitutionTemplate::build(std::string_view text) {
    segments_.clear();
    has_references_ = false;
    closed_ = true;
    std::string literal;
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t p = text.find('$', i);
        if (p == std::string_view::npos) {
            literal += text.substr(i);
            break;
        }
        literal += text.substr(i, p - i);
        if (p + 1 < text.size() && text[p + 1] == '$') {
            literal += '$';
            i = p + 2;
            continue;
        }
        const std::size_t q = text.find('$', p + 1);
        if (q == std::string_view::npos) {
            closed_ = false;
            return;
        }
        if (!literal.empty()) segments_.push_back({std::move(literal)});
        literal.clear();
        std::string_view name = text.substr(p + 1, q - p - 1);
        const bool indexed = name.find('[') != std::string_view::npos;
        segments_.push_back({indexed ? std::string(name) : text::to_lower(name), true, indexed});
        has_references_ = true;
        i = q + 1;
    }
    if (!literal.empty()) segments_.push_back({std::move(literal)});
}

void SubstitutionTemplate::expand(const VariableTable& variables, std::string& out) const {
    out.clear();
    auto add = [&](std::string_view piece) {
        variables.check_length(out.size() + piece.size());
        out += piece;
    };
    for (const Segment& s : segments_) {
        if (!s.reference) {
            add(s.text);
        } else if (s.indexed) {
            add(variables.get(s.text));
        } else {
            if (s.cached_entry < 0) s.cached_entry = variables.find(s.text);
            if (s.cached_entry >= 0) add(variables.value_at(s.cached_entry));
        }
    }
}

}  // namespace quiller
