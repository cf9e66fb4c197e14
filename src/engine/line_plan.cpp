#include "engine/line_plan.hpp"

#include <algorithm>

#include "engine/program.hpp"
#include "expr/condition.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller {
namespace {

using Facts = value::TextFacts;

// Stands for one reference's value in the line's text while the plan is worked out.
constexpr char kMark = '\x01';

// Where an unquoted word begins with a value, the value decides the delimiter, the braces and
// the word's very existence.
constexpr std::uint16_t kWordStart = Facts::kEmpty | Facts::kBlank | Facts::kOpensSpecial;

std::uint16_t quote_shape(char quote) {
    return quote == '"' ? Facts::kDoubleQuote : quote == '\'' ? Facts::kSingleQuote : Facts::kCaret;
}

const Facts& empty_facts() {
    static const Facts facts;
    return facts;
}

}  // namespace

std::unique_ptr<LinePlan> LinePlan::build(const ProgramLine& line, const Language& language) {
    if (line.keyword_has_env || line.arguments_have_env || !line.template_.closed() ||
        !line.statement || line.arguments.find(kMark) != std::string::npos)
        return nullptr;
    auto plan = std::make_unique<LinePlan>();
    plan->keyword_ = line.keyword;
    plan->row_ = line.statement;
    plan->for_set_ = line.statement->has(kAssignment);
    std::string encoded = line.arguments.substr(0, line.set_prefix_length);
    for (const SubstitutionTemplate::Segment& s : line.template_.segments()) {
        if (!s.reference) {
            encoded += s.text;
            continue;
        }
        encoded += kMark;
        plan->references_.push_back({s.text, s.indexed});
    }
    plan->literal_length_ = encoded.size() - plan->references_.size();
    if (plan->row_->has(kCondition) && !plan->rewrite_condition(encoded, language)) return nullptr;
    if (!plan->split(encoded, encoded)) return nullptr;
    if (line.statement->has(kCondition) && !plan->slots_.empty() &&
        plan->slots_[0].kind == SlotKind::Literal)
        plan->test_ = language.test(text::to_lower(plan->slots_[0].text));
    plan->resolved_.resize(plan->references_.size());
    for (std::size_t k = 0; k < plan->slots_.size(); ++k) {
        const SlotPlan& p = plan->slots_[k];
        if (p.kind != SlotKind::Literal) {
            plan->valued_slots_.push_back(static_cast<int>(k) + 1);
            continue;
        }
        plan->own_slots_[k + 1] = p.text;
        plan->facts_.operand[k + 1] = &p.facts;
    }
    plan->facts_.test = plan->test_;
    if (plan->for_set_ && plan->slots_.size() >= 2 && plan->slots_[1].kind == SlotKind::Literal)
        plan->facts_.function = language.function(text::to_lower(text::trim(plan->slots_[1].text)));
    return plan;
}

// The operator rewriting of conditions, done on the text with its values marked: values may hold
// no operator sign, and none may decide whether the condition begins with "not".
bool LinePlan::rewrite_condition(std::string& text, const Language& language) {
    for (Reference& r : references_) r.forbidden |= Facts::kOperator;
    // An empty value would join the signs around it (">" and "=" into ">=").
    auto is_sign = [](char c) { return c == '<' || c == '>' || c == '='; };
    for (std::size_t p = text.find(kMark); p != std::string::npos; p = text.find(kMark, p + 1)) {
        if ((p > 0 && is_sign(text[p - 1])) || (p + 1 < text.size() && is_sign(text[p + 1])))
            forbid(std::string_view(text).substr(p, 1), text, Facts::kEmpty);
    }
    const std::size_t head = std::min<std::size_t>(3, text.size());
    const std::size_t mark = text.find(kMark);
    if (mark == 0) {
        forbid(std::string_view(text).substr(0, 1), text, Facts::kEmpty | Facts::kStartsN);
    } else if (mark < head && text::ascii_lower_char(text[0]) == 'n') {
        return false;
    }
    if (normalise_condition(keyword_, text)) row_ = language.statement(keyword_);
    return row_ != nullptr;
}

// Each mark in `part` (a piece of `encoded`) forbids `shapes` to its reference's value.
void LinePlan::forbid(std::string_view part, const std::string& encoded, std::uint16_t shapes) {
    const std::size_t offset = static_cast<std::size_t>(part.data() - encoded.data());
    std::size_t ordinal = static_cast<std::size_t>(
        std::count(encoded.begin(), encoded.begin() + static_cast<std::ptrdiff_t>(offset), kMark));
    for (const char c : part)
        if (c == kMark) references_[ordinal++].forbidden |= shapes;
}

// The argument splitter, walked over the marked text.
bool LinePlan::split(std::string_view t, const std::string& encoded) {
    t = text::trim(t);
    int i = 1;
    while (!t.empty() && t.front() != '{' && i < kSlotCount) {
        const char first = t.front();
        if (first == kMark) forbid(t.substr(0, 1), encoded, kWordStart);
        const bool quoted = is_quote_character(first);
        std::size_t end;
        if (quoted) {
            t.remove_prefix(1);
            end = t.find(first);
            if (end == std::string_view::npos) return false;  // an unclosed quote
            forbid(t.substr(0, end), encoded, quote_shape(first));
        } else {
            end = std::min(t.find(' '), t.size());
            forbid(t.substr(0, end), encoded, Facts::kBlank);
        }
        add_slot(t.substr(0, end), i, quoted, first, encoded);
        t = end < t.size() ? text::trim(t.substr(end + 1)) : std::string_view{};
        ++i;
    }
    if (t.empty()) return true;
    if (t.front() == kMark) forbid(t.substr(0, 1), encoded, kWordStart);
    if (t.front() != '{') return true;
    if (t.find(kMark) != std::string_view::npos) return false;  // values in the option text
    option_text_ = text::to_lower(t.size() >= 2 ? t.substr(1, t.size() - 2) : std::string_view{});
    return true;
}

void LinePlan::add_slot(std::string_view slot, int index, bool quoted, char delimiter,
                        const std::string& encoded) {
    SlotPlan p;
    p.quoted = quoted;
    p.delimiter = delimiter;
    const auto marks = std::count(slot.begin(), slot.end(), kMark);
    if (marks == 0) {
        p.text = slot;
        if (for_set_)
            quote_for_set(p.text, index, quoted, delimiter, !quoted && value::is_numeric(p.text));
        p.operand = for_set_ ? std::string(text::unquote(p.text)) : p.text;
    } else if (slot.size() == 1) {
        p.kind = SlotKind::Reference;
        const std::size_t offset = static_cast<std::size_t>(slot.data() - encoded.data());
        p.reference = static_cast<int>(std::count(
            encoded.begin(), encoded.begin() + static_cast<std::ptrdiff_t>(offset), kMark));
    } else {
        p.kind = SlotKind::Mixed;
        p.text = slot;
        const std::size_t offset = static_cast<std::size_t>(slot.data() - encoded.data());
        p.reference = static_cast<int>(std::count(
            encoded.begin(), encoded.begin() + static_cast<std::ptrdiff_t>(offset), kMark));
    }
    slots_.push_back(std::move(p));
}

// A found entry is kept: entries are never removed and never move.
LinePlan::Resolved LinePlan::resolve(const Reference& r, const VariableTable& variables) const {
    if (r.value) return {*r.value, r.facts};
    const int entry =
        r.indexed ? variables.find(variables.prepare_get_name(r.name)) : variables.find(r.name);
    if (entry < 0) return {{}, &empty_facts()};
    if (!r.indexed) {
        r.value = &variables.value_at(entry);
        r.facts = &variables.facts_at(entry);
    }
    return {variables.value_at(entry), &variables.facts_at(entry)};
}

const Slots* LinePlan::fill(const VariableTable& variables, Slots& shared,
                            std::size_t limit) const {
    std::size_t length = literal_length_;
    for (std::size_t r = 0; r < references_.size(); ++r) {
        const Resolved v = resolve(references_[r], variables);
        if (v.facts->shape(v.text, references_[r].forbidden)) return nullptr;
        length += v.text.size();
        resolved_[r] = v;
    }
    if (length > limit) return nullptr;
    // Long values go to the shared slots, so that no line keeps a copy of them.
    const bool own = length <= kOwnSlotsMax;
    Slots& slots = own ? own_slots_ : shared;
    if (!own) {
        for (std::size_t k = 0; k < slots_.size(); ++k) shared[k + 1] = slots_[k].text;
        for (std::size_t i = slots_.size() + 1; i <= kSlotCount; ++i) shared[i].clear();
    }
    for (const int i : valued_slots_) {
        const SlotPlan& p = slots_[static_cast<std::size_t>(i - 1)];
        if (p.kind == SlotKind::Reference) {
            fill_reference(p, i, slots);
        } else {
            fill_mixed(p, i, slots);
        }
    }
    return &slots;
}

void LinePlan::fill_reference(const SlotPlan& p, int index, Slots& slots) const {
    const Resolved& v = resolved_[static_cast<std::size_t>(p.reference)];
    std::string& slot = slots[index];
    const value::TextFacts*& facts = facts_.operand[static_cast<std::size_t>(index)];
    facts = v.facts;
    if (!for_set_) {
        slot.assign(v.text);
        return;
    }
    if (p.quoted || v.facts->numeric(v.text)) {  // wrapped: the operand is the value
        const char quote = p.quoted ? p.delimiter : '"';
        slot.assign(1, quote);
        slot += v.text;
        slot += quote;
        return;
    }
    slot.assign(v.text);
    quote_for_set(slot, index, false, p.delimiter, false);
    // Unwrapped, the operand is the slot after the unquoting rule, which may differ from it.
    if (slot.size() == v.text.size() && v.facts->shape(v.text, Facts::kUnquotes)) facts = nullptr;
}

void LinePlan::fill_mixed(const SlotPlan& p, int index, Slots& slots) const {
    std::string& slot = slots[index];
    slot.clear();
    std::size_t r = static_cast<std::size_t>(p.reference);
    for (const char c : p.text) {
        if (c == kMark) {
            slot += resolved_[r++].text;
        } else {
            slot += c;
        }
    }
    if (for_set_)
        quote_for_set(slot, index, p.quoted, p.delimiter, !p.quoted && value::is_numeric(slot));
}

}  // namespace quiller
