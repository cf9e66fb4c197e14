// The program table: the loaded script as numbered lines of keyword and argument text, with what
// the interpreter precomputes per line so that running a line does as little work as possible.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engine/language.hpp"
#include "engine/line_plan.hpp"
#include "engine/substitution.hpp"

namespace quiller {

inline constexpr int kMaxLines = 32767;  // line numbers are 16-bit signed

struct ProgramLine {
    std::string keyword;                      // lower case
    std::string arguments;                    // as written
    const StatementRow* statement = nullptr;  // null when unknown or named through "%"
    bool keyword_has_env = false;
    bool arguments_have_env = false;
    // Variable substitution of the arguments, prepared at load time (see SubstitutionTemplate).
    SubstitutionTemplate template_;
    // `set` keeps its target's name: only the text after `set_prefix_length` is substituted.
    std::size_t set_prefix_length = 0;
    // Where the slots come from, when the line has a plan.
    std::unique_ptr<LinePlan> plan;
    // The last resolved `set` target, so a loop's assignment skips the name preparation.
    std::string cached_target;
    int cached_target_index = -1;
};

// Works out what running `line` needs of its keyword and argument text (the statement row, the
// substitution template, the plan), once, when it is loaded.
void prepare_program_line(ProgramLine& line, const Language& language);

class Program {
  public:
    int count() const { return static_cast<int>(lines_.size()); }
    // Lines are numbered from 1.
    ProgramLine& line(int n) { return lines_[static_cast<std::size_t>(n - 1)]; }
    const ProgramLine& line(int n) const { return lines_[static_cast<std::size_t>(n - 1)]; }
    void append(ProgramLine line) { lines_.push_back(std::move(line)); }
    // Bumped whenever lines are added, so caches of line searches know to start afresh.
    std::uint32_t generation() const { return generation_; }
    void touch() { ++generation_; }

  private:
    std::vector<ProgramLine> lines_;
    std::uint32_t generation_ = 0;
};

}  // namespace quiller
