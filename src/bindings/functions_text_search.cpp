// Searching in text: `find`, `findrev`, `word`. Positions are 1-based character positions.
//
// `find` and `findrev` lower-case both texts and then compare exactly; `word` finds its
// separator without regard to case (full case folding, so "SS" also cuts at "ß").
//
// An empty text sought is found at every character position of a non-empty text and nowhere
// else: `find` gives the a3-th position (0 past the end), `findrev` the last position (the
// length of a1), and both give 0 in an empty text.
#include <algorithm>
#include <string>
#include <vector>

#include "value/text.hpp"
#include "bindings/functions_text.hpp"

namespace quiller::text_functions_detail {
namespace {

constexpr std::size_t npos = std::string::npos;

// A text lower-cased for searching, with the way back to the character positions of the
// original. Lower-casing may turn one character into two ("İ" into "i" and a combining dot),
// so then the start of each original character is recorded.
class LowerText {
  public:
    explicit LowerText(std::string_view s) : lowered_(text::to_lower(s)) {
        if (text::char_count(lowered_) == text::char_count(s)) return;
        lowered_.clear();
        for (std::size_t pos = 0; pos < s.size();) {
            const std::size_t length = text::byte_offset_of_char(s.substr(pos), 1);
            starts_.push_back(lowered_.size());
            lowered_ += text::to_lower(s.substr(pos, length));
            pos += length;
        }
    }

    const std::string& text() const { return lowered_; }

    // The 1-based position in the original of the character holding byte `pos` of text().
    std::size_t position_of(std::size_t pos) const {
        if (starts_.empty()) return text::char_count(std::string_view(lowered_).substr(0, pos)) + 1;
        return static_cast<std::size_t>(std::upper_bound(starts_.begin(), starts_.end(), pos) -
                                        starts_.begin());
    }

    // The byte of text() where the original's 1-based position `p` starts (its size past the end).
    std::size_t byte_of(std::int64_t p) const {
        const auto index = static_cast<std::size_t>(p - 1);
        if (starts_.empty()) return text::byte_offset_of_char(lowered_, index);
        return index < starts_.size() ? starts_[index] : lowered_.size();
    }

  private:
    std::string lowered_;
    std::vector<std::size_t> starts_;  // empty when characters map one to one
};

std::size_t search(const std::string& hay, const std::string& needle, std::size_t from) {
    if (needle.empty()) return from < hay.size() ? from : npos;
    return hay.find(needle, from);
}

std::size_t next_char(std::string_view s, std::size_t pos) {
    return pos + text::byte_offset_of_char(s.substr(pos), 1);
}

// The end of the case-blind match of `sep` that starts at byte `hit` of `s`.
std::size_t match_end(std::string_view s, std::size_t hit, std::string_view sep) {
    std::size_t end = next_char(s, hit);
    while (end < s.size() && !text::iequals(s.substr(hit, end - hit), sep)) end = next_char(s, end);
    return end;
}

}  // namespace

// The position of the a3-th occurrence of a2 in a1 (empty a3: the first), overlapping
// occurrences counting; 0 when there are fewer or a3 is 0 or less. A non-empty a4 makes the
// first search start at position a3 instead of 1: a3 then is both the start and the count.
std::string find(const FunctionCall& call) {
    const std::string_view a3 = call.arg(3);
    const std::int64_t n = a3.empty() ? 1 : whole_number(a3, kLongMin, kLongMax);
    if (n <= 0) return "0";
    const LowerText hay(call.arg(1));
    const std::string needle = text::to_lower(call.arg(2));
    std::size_t from = hay.byte_of(call.arg(4).empty() ? 1 : n);
    for (std::int64_t count = 1;; ++count) {
        const std::size_t hit = search(hay.text(), needle, from);
        if (hit == npos) return "0";
        if (count == n) return std::to_string(hay.position_of(hit));
        from = next_char(hay.text(), hit);
    }
}

// The position of the last occurrence of a2 in a1; 0 when there is none.
std::string findrev(const FunctionCall& call) {
    const std::string_view a1 = call.arg(1);
    if (a1.empty()) return "0";
    const std::string needle = text::to_lower(call.arg(2));
    if (needle.empty()) return std::to_string(text::char_count(a1));
    const LowerText hay(a1);
    const std::size_t hit = hay.text().rfind(needle);
    return hit == npos ? "0" : std::to_string(hay.position_of(hit));
}

// The n-th piece (n = a3) of a1 cut at each occurrence of a2. An n of 0 or an empty a2 gives
// the whole of a1; a negative n or an n beyond the last piece gives "".
std::string word(const FunctionCall& call) {
    const std::string_view s = call.arg(1);
    const std::string_view sep = call.arg(2);
    const std::int64_t n = whole_number(call.arg(3), kLongMin, kLongMax);
    if (n == 0 || sep.empty()) return std::string(s);
    if (n < 0) return {};
    std::size_t from = 0;
    for (std::int64_t piece = 1; piece < n; ++piece) {
        const std::size_t hit = text::ifind(s, sep, from);
        if (hit == npos) return {};
        from = match_end(s, hit, sep);
    }
    const std::size_t hit = text::ifind(s, sep, from);
    return std::string(s.substr(from, hit == npos ? npos : hit - from));
}

}  // namespace quiller::text_functions_detail
