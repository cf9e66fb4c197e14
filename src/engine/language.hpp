// The language the engine runs: three tables of rows, one per kind (statements, built-in
// functions, condition tests), handed to the engine by the program that starts it. The rows
// live with the script bindings above the engine; the engine knows only their shape and finds
// a row by its name (the tables are kept in alphabetical order and searched by halving).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quiller {

class Engine;
struct FunctionCall;

using StatementHandler = void (*)(Engine&);
using FunctionHandler = std::string (*)(const FunctionCall&);
// A condition test of operands A and B (slots 2 and 3 of `if`, `ifnot`, `while`, `until`).
using ConditionTest = bool (*)(Engine&, const std::string& a, const std::string& b);

// The handler of a row that belongs to a later release: the name is known, and using it is
// answered with "is not available yet".
inline constexpr std::nullptr_t kLaterRelease = nullptr;

// Who owns a statement's work: the engine itself, or one domain of the script bindings.
enum class Domain : std::uint8_t {
    ControlFlow,
    Engine,
    FileOperations,
    Files,
    Ini,
    Network,
    Output,
    Processes,
    Registry,
    Sync,
    System,
};

// What the engine must know of a statement beyond its handler.
enum Trait : std::uint16_t {
    kAssignment = 1 << 0,        // `set`: the target's name is not substituted; quotes are kept
    kCondition = 1 << 1,         // comparison operators are rewritten into test words first
    kQuietHidesErrors = 1 << 2,  // "quiet" also keeps the error window closed
    // Block roles, for the line finder.
    kOpensIf = 1 << 3,
    kElse = 1 << 4,
    kClosesIf = 1 << 5,
    kOpensWhile = 1 << 6,
    kClosesWhile = 1 << 7,
    kOpensRepeat = 1 << 8,
    kClosesRepeat = 1 << 9,
    kLabel = 1 << 10,
    kSub = 1 << 11,
    // Indentation of the debugger's listing.
    kIndentAfter = 1 << 12,    // the lines after this one sit a level deeper
    kOutdentBefore = 1 << 13,  // this line and those after it sit a level shallower
};

struct StatementRow {
    std::string_view keyword;
    // The option words the statement reads, blank-separated. "quiet" is read by every statement
    // and not listed.
    std::string_view options;
    StatementHandler run;  // kLaterRelease for a row of a later release
    Domain domain;
    std::uint16_t traits = 0;

    bool has(Trait t) const { return (traits & t) != 0; }
};

struct FunctionRow {
    std::string_view name;
    int arity;            // the arguments a1.. the function reads; later ones read as empty
    FunctionHandler run;  // kLaterRelease for a row of a later release
};

struct ConditionTestRow {
    std::string_view name;
    ConditionTest run;
};

class Language {
  public:
    // The tables must be in alphabetical order (checked; a table out of order is a program error).
    Language(std::span<const StatementRow> statements, std::span<const FunctionRow> functions,
             std::span<const ConditionTestRow> tests);

    std::span<const StatementRow> statements() const { return statements_; }
    // The row of a name in lower case, or null.
    const StatementRow* statement(std::string_view keyword) const;
    const FunctionRow* function(std::string_view name) const;
    const ConditionTestRow* test(std::string_view name) const;

  private:
    std::span<const StatementRow> statements_;
    std::span<const FunctionRow> functions_;
    std::span<const ConditionTestRow> tests_;
};

}  // namespace quiller
