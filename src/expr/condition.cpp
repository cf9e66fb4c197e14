#include "expr/condition.hpp"

#include "engine/engine.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller {
namespace {

struct OperatorWord {
    std::string_view symbol;
    std::string_view word;
};
constexpr OperatorWord kOperators[] = {
    {"<>", "notequal"}, {"<=", "lessthanorequal"}, {">=", "greaterthanorequal"},
    {"=", "equal"},     {"<", "lessthan"},         {">", "greaterthan"},
};

template <typename T>
int three_way(T a, T b) {
    return a < b ? -1 : (b < a ? 1 : 0);
}

// 1 January 1801 stands in for an operand that is not a date.
const double kFallbackDate = value::date_serial(1801, 1, 1);

// Ordinal comparison of the lower-cased texts; ASCII texts are compared in place.
int compare_lower(std::string_view a, std::string_view b) {
    if (!text::is_ascii(a) || !text::is_ascii(b))
        return text::to_lower(a).compare(text::to_lower(b));
    const std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        const char x = text::ascii_lower_char(a[i]);
        const char y = text::ascii_lower_char(b[i]);
        if (x != y) return static_cast<unsigned char>(x) < static_cast<unsigned char>(y) ? -1 : 1;
    }
    return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
}

// The row of a test name; an ASCII name (every name of the table) is lower-cased without an
// allocation.
const ConditionTestRow* find_test(const Language& language, std::string_view word) {
    char lower[32];
    if (word.size() > sizeof lower || !text::is_ascii(word))
        return language.test(text::to_lower(word));
    for (std::size_t i = 0; i < word.size(); ++i) lower[i] = text::ascii_lower_char(word[i]);
    return language.test(std::string_view(lower, word.size()));
}

}  // namespace

bool normalise_condition(std::string& command, std::string& condition) {
    bool changed = false;
    if (condition.size() >= 3 && text::ascii_lower_char(condition[0]) == 'n' &&
        text::ascii_lower_char(condition[1]) == 'o' &&
        text::ascii_lower_char(condition[2]) == 't') {
        command += "not";
        condition = std::string(text::trim(std::string_view(condition).substr(3)));
        changed = true;
    }
    // Rewritten in place ("a < b" becomes "lessthan a   b"), so the line's buffer is reused.
    if (condition.find_first_of("<>=") == std::string::npos) return changed;
    for (const OperatorWord& op : kOperators) {
        const std::size_t p = condition.find(op.symbol);
        if (p == std::string::npos) continue;
        condition.replace(p, op.symbol.size(), 1, ' ');
        condition.insert(0, 1, ' ');
        condition.insert(0, op.word);
        break;
    }
    return changed;
}

int compare_operands(std::string_view a, std::string_view b, int year,
                     const value::TextFacts* facts_a, const value::TextFacts* facts_b) {
    const value::Operand x{a, facts_a};
    const value::Operand y{b, facts_b};
    const std::optional<double> date_a = x.date(year);
    const std::optional<double> date_b = y.date(year);
    if (date_a || date_b)
        return three_way(date_a.value_or(kFallbackDate), date_b.value_or(kFallbackDate));

    const bool numeric_a = x.numeric();
    const bool numeric_b = y.numeric();
    if (!numeric_a && !numeric_b) return compare_lower(a, b);
    // A number is always less than a text (an operand that failed the number test).
    if (numeric_a && numeric_b) return three_way(x.number(), y.number());
    return numeric_a ? -1 : 1;
}

// The test of slot 1; the line's plan may have found it at load.
bool eval_boolean(Engine& engine, const Slots& words) {
    const SlotFacts* facts = engine.facts_for(words);
    const ConditionTestRow* row =
        facts && facts->test ? facts->test : find_test(engine.language(), words[1]);
    if (row) return row->run(engine, words[2], words[3]);
    engine.report_error(
        "(EvalBoolean) : " + words[1] + " " + words[2] + " " + words[3] + " :Unrecognized command",
        Severity::Warning);
    return false;
}

namespace conditions {

bool equal(Engine& e, const std::string& a, const std::string& b) {
    return compare_operands(a, b, e.current_year(), e.facts_of(a), e.facts_of(b)) == 0;
}
bool notequal(Engine& e, const std::string& a, const std::string& b) {
    return compare_operands(a, b, e.current_year(), e.facts_of(a), e.facts_of(b)) != 0;
}
bool lessthan(Engine& e, const std::string& a, const std::string& b) {
    return compare_operands(a, b, e.current_year(), e.facts_of(a), e.facts_of(b)) < 0;
}
bool lessthanorequal(Engine& e, const std::string& a, const std::string& b) {
    return compare_operands(a, b, e.current_year(), e.facts_of(a), e.facts_of(b)) <= 0;
}
bool greaterthan(Engine& e, const std::string& a, const std::string& b) {
    return compare_operands(a, b, e.current_year(), e.facts_of(a), e.facts_of(b)) > 0;
}
bool greaterthanorequal(Engine& e, const std::string& a, const std::string& b) {
    return compare_operands(a, b, e.current_year(), e.facts_of(a), e.facts_of(b)) >= 0;
}

}  // namespace conditions

}  // namespace quiller
