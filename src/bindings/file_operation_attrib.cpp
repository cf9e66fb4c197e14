// `setattrib PATH FLAGS...`: sets and clears read-only, hidden, system, archive and compressed.
#include "engine/engine.hpp"
#include "os/file_operation_paths.hpp"
#include "bindings/file_operation_select.hpp"
#include "bindings/file_operation_steps.hpp"

namespace quiller::fileops {
namespace {

constexpr std::pair<char, std::uint32_t> kLetters[] = {
    {'R', kAttrReadOnly}, {'H', kAttrHidden},     {'S', kAttrSystem},
    {'A', kAttrArchive},  {'C', kAttrCompressed},
};

std::uint32_t bit_of(char letter) {
    const char upper = letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 32) : letter;
    for (const auto& [l, bit] : kLetters)
        if (l == upper) return bit;
    return 0;
}

std::string letters_of(std::uint32_t bits) {
    std::string out;
    for (const auto& [letter, bit] : kLetters)
        if (bits & bit) out += letter;
    return out;
}

// Reads one word's flags into `change`; false when it holds anything else.
bool read_word(std::string_view word, AttributeChange& change, bool& any) {
    char sign = 0;
    bool pending = false;  // a sign still waiting for its letter
    for (const char c : word) {
        if (c == '+' || c == '-') {
            if (pending) return false;
            sign = c;
            pending = true;
        } else if (c == ' ' || c == ',') {
            if (pending) return false;
            sign = 0;
        } else {
            const std::uint32_t bit = bit_of(c);
            if (!bit || !sign) return false;
            (sign == '+' ? change.set : change.clear) |= bit;
            (sign == '+' ? change.clear : change.set) &= ~bit;
            pending = false;
            any = true;
        }
    }
    return !pending;
}

void set_one(FileSystem& ops, const Match& m, const AttributeChange& change,
             Problems& problems) {
    const Result<AttributeOutcome> set = ops.set_attributes(m.path, change.set, change.clear);
    if (!set) return problems.add("Couldn't set the attributes of " + quoted(m.path), set.status());
    if (set->result == AttributeResult::NotKept)
        return problems.add(
            "The file system of " + quoted(m.path) + " can't keep the attributes H, S, A and C",
            set->why);
    const Result<FileEntry> now = ops.entry(m.path);
    if (!now) return;
    const std::uint32_t stuck = (change.set & ~now->attributes) | (change.clear & now->attributes);
    if (stuck)  // such as a POSIX name beginning with ".", which is always hidden
        problems.add("The attributes " + letters_of(stuck) + " of " + quoted(m.path) +
                     " could not be changed");
}

}  // namespace

std::optional<AttributeChange> parse_attribute_flags(const std::vector<std::string_view>& words,
                                                     std::string& bad) {
    AttributeChange change;
    bool any = false;
    for (const std::string_view word : words) {
        if (!read_word(word, change, any)) {
            bad = word;
            return std::nullopt;
        }
    }
    if (!any) return std::nullopt;
    return change;
}

void run_setattrib(Engine& e, FileSystem& ops) {
    const Slots& s = e.slots();
    Problems problems("setattrib");
    std::vector<std::string_view> words;
    for (std::size_t i = 2; i < s.size(); ++i)
        if (!s[i].empty()) words.push_back(s[i]);
    std::string bad;
    const auto change = parse_attribute_flags(words, bad);
    if (s[1].empty() || !change) {
        problems.add(!bad.empty() ? "Unknown attribute flag " + quoted(bad) +
                                        " (use +R -R +H -H +S -S +A -A +C -C)"
                     : s[1].empty() ? "A path and attribute flags are needed"
                                    : "No attribute flags given");
        return problems.report(e);
    }
    Selection sel = select(ops, s[1]);
    if (sel.matches.empty() && (!sel.wildcard || !sel.error.ok()))
        add_unreadable(problems, sel.wildcard ? split(s[1]).directory : s[1], sel.error);
    else if (sel.matches.empty())
        problems.add("Nothing matches " + quoted(s[1]));
    for (const Match& m : sel.matches) set_one(ops, m, *change, problems);
    problems.report(e);
}

}  // namespace quiller::fileops
