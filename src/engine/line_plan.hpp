// A program line's shape, worked out once at load: where its slots come from after substitution
// and splitting, so that running it copies values into slots instead of substituting and splitting
// its text. A plan holds only while the values it puts in are plain enough not to move a slot
// boundary, a quote, a brace or a condition operator; `fill` checks that for every value (from the
// facts kept beside it) and answers false otherwise, and the line then runs the long way.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/language.hpp"
#include "engine/splitter.hpp"
#include "engine/variables.hpp"
#include "value/text_facts.hpp"

namespace quiller {

struct ProgramLine;

// What is known of the statement's slots beyond their text: for each slot the facts of its
// operand text (the slot itself, or for `set` the slot after the unquoting rule) when they are
// kept somewhere, and the condition test of slot 1.
struct SlotFacts {
    std::array<const value::TextFacts*, kSlotCount + 1> operand{};
    const ConditionTestRow* test = nullptr;
    const FunctionRow* function = nullptr;  // of a `set` line's word 2
};

class LinePlan {
  public:
    // Null for a line that has no plan ("%" references, an unclosed delimiter or quote, option
    // braces holding references, a condition whose rewriting depends on the values).
    static std::unique_ptr<LinePlan> build(const ProgramLine& line, const Language& language);

    // Fills slots as substituting and splitting the line now would: the plan's own, whose slots
    // without references were written once at load, or for long values `shared`. Null when a
    // value breaks the plan or the substituted line would be longer than `limit`.
    const Slots* fill(const VariableTable& variables, Slots& shared, std::size_t limit) const;
    // What is known of the slots `fill` filled last.
    const SlotFacts& facts() const { return facts_; }

    const std::string& keyword() const { return keyword_; }  // after a condition's "not"
    const StatementRow* row() const { return row_; }
    const std::string& option_text() const { return option_text_; }  // lower case

  private:
    struct Reference {
        std::string name;
        bool indexed = false;
        std::uint16_t forbidden = 0;  // TextFacts shapes that break the plan
        mutable const std::string* value = nullptr;  // the entry, once found (unless indexed)
        mutable const value::TextFacts* facts = nullptr;
    };
    enum class SlotKind : std::uint8_t { Literal, Reference, Mixed };
    struct SlotPlan {
        SlotKind kind = SlotKind::Literal;
        bool quoted = false;
        char delimiter = ' ';
        int reference = -1;      // Reference: its index
        std::string text;        // Literal: the final slot; Mixed: pieces with marks for values
        std::string operand;     // Literal: the operand text its facts describe
        value::TextFacts facts;  // Literal
    };
    struct Resolved {
        std::string_view text;
        const value::TextFacts* facts;
    };

    bool rewrite_condition(std::string& text, const Language& language);
    bool split(std::string_view text, const std::string& encoded);
    void add_slot(std::string_view slot, int index, bool quoted, char delimiter,
                  const std::string& encoded);
    void forbid(std::string_view part, const std::string& encoded, std::uint16_t shapes);
    Resolved resolve(const Reference& r, const VariableTable& variables) const;
    void fill_reference(const SlotPlan& p, int index, Slots& slots) const;
    void fill_mixed(const SlotPlan& p, int index, Slots& slots) const;

    std::string keyword_;
    const StatementRow* row_ = nullptr;
    bool for_set_ = false;
    std::string option_text_;
    const ConditionTestRow* test_ = nullptr;
    std::vector<Reference> references_;
    std::vector<SlotPlan> slots_;  // slots 1.. in order
    std::vector<int> valued_slots_;  // the slots that hold values (not Literal)
    std::size_t literal_length_ = 0;
    mutable std::vector<Resolved> resolved_;
    static constexpr std::size_t kOwnSlotsMax = 1024;
    mutable Slots own_slots_;
    mutable SlotFacts facts_;
};

}  // namespace quiller
