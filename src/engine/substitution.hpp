// "$name$" and "%name%" substitution. A doubled delimiter stands for one literal delimiter;
// inserted values are never substituted again; an unclosed delimiter empties the whole text.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/variables.hpp"

namespace quiller {

// Looks a reference's name up: a script variable for "$", an environment variable for "%".
using NameLookup = std::function<std::string(std::string_view name)>;

struct SubstitutionResult {
    std::string text;
    bool unclosed = false;  // an unclosed delimiter was met; `text` is the text as it stood then
};

// The substitution routine: replaces every reference in `text` that uses `delimiter`. A result
// longer than `limit` is the failure "Out of string space".
SubstitutionResult replace_references(char delimiter, std::string_view text,
                                      const NameLookup& lookup, std::size_t limit = kMaxTextLength);

// The same "$" substitution, worked out once per program line: literal pieces and variable
// references, with each reference's table entry cached once found (entries are never removed).
class SubstitutionTemplate {
  public:
    void build(std::string_view text);
    bool has_references() const { return has_references_; }
    // False when the text has an unclosed delimiter: callers then run `replace_references`.
    bool closed() const { return closed_; }
    void expand(const VariableTable& variables, std::string& out) const;

    struct Segment {
        std::string text;  // the literal, or the lower-cased name of a reference
        bool reference = false;
        bool indexed = false;
        mutable int cached_entry = -1;
    };
    const std::vector<Segment>& segments() const { return segments_; }

  private:
    std::vector<Segment> segments_;
    bool has_references_ = false;
    bool closed_ = true;
};

}  // namespace quiller
