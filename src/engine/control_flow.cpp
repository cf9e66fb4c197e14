// Control flow: the line finder and the block statements. Blocks keep no stack: each statement
// that needs its partner searches the program table, counting nesting; results are cached until
// the table grows.
#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "engine/statements.hpp"
#include "expr/condition.hpp"
#include "value/text.hpp"

namespace quiller {
namespace {

const char* missing_text(BlockKind kind) {
    switch (kind) {
        case BlockKind::Repeat:
            return "(Findline) Couldn't find 'repeat'";
        case BlockKind::EndWhile:
            return "(Findline) Couldn't find 'endwhile'";
        case BlockKind::While:
            return "(Findline) Couldn't find 'while'";
        case BlockKind::EndIf:
            return "(Findline) Couldn't find 'else or endif'";
        default:
            return "";
    }
}

}  // namespace

// Walks the table for `kind`. Named kinds (label, sub) search from `first_line` to the end.
std::optional<int> Engine::search(BlockKind kind, std::string_view name, int start,
                                  int first_line) {
    const int count = program_.count();
    auto is = [&](int n, Trait role) {
        const StatementRow* row = program_.line(n).statement;
        return row && row->has(role);
    };
    switch (kind) {
        case BlockKind::Repeat:
        case BlockKind::While: {
            const Trait opener = kind == BlockKind::Repeat ? kOpensRepeat : kOpensWhile;
            const Trait closer = kind == BlockKind::Repeat ? kClosesRepeat : kClosesWhile;
            int depth = 1;
            for (int n = std::min(start, count); n >= 1; --n) {
                if (is(n, closer)) ++depth;
                if (is(n, opener) && --depth == 0) return n - 1;
            }
            return std::nullopt;
        }
        case BlockKind::EndWhile: {
            // The walk stays below the line count: an endwhile on the very last line is not
            // found, as scripts written for this language have always seen it.
            int depth = 1;
            for (int n = std::max(start, 1); n < count; ++n) {
                if (is(n, kOpensWhile)) ++depth;
                if (is(n, kClosesWhile) && --depth == 0) return n;
            }
            return std::nullopt;
        }
        case BlockKind::EndIf: {
            int depth = 0;
            for (int n = std::max(start, 1); n <= count; ++n) {
                if (is(n, kOpensIf)) {
                    ++depth;
                } else if (is(n, kClosesIf) || is(n, kElse)) {
                    if (depth == 0) return n;
                    if (is(n, kClosesIf)) --depth;
                }
            }
            return std::nullopt;
        }
        case BlockKind::Goto:
        case BlockKind::Sub: {
            const Trait role = kind == BlockKind::Goto ? kLabel : kSub;
            for (int n = std::max(first_line, 1); n <= count; ++n) {
                if (is(n, role) && text::to_lower(program_.line(n).arguments) == name) return n;
            }
            return std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<int> Engine::findline(BlockKind kind, std::string_view name, int start, bool quiet) {
    const bool named = kind == BlockKind::Goto || kind == BlockKind::Sub;
    std::string lowered = named ? text::to_lower(name) : std::string();
    if (kind == BlockKind::Goto && !lowered.empty() && lowered.front() == ':') lowered.erase(0, 1);
    const std::optional<int> found =
        named ? search(kind, lowered, start, 1) : find_partner(kind, start);
    if (!found && !quiet) {
        std::string message = missing_text(kind);
        if (kind == BlockKind::Goto) message = "(Findline) Couldn't find '" + lowered + "'";
        if (kind == BlockKind::Sub)
            message = " (Findline): Couldn't find 'sub " + std::string(name);
        report_error(message, Severity::Fatal);
    }
    return found;
}

// The partner of a block statement, searched once per start line and kind until the table grows.
std::optional<int> Engine::find_partner(BlockKind kind, int start) {
    if (findline_generation_ != program_.generation()) {
        for (std::vector<int>& cache : findline_cache_) cache.clear();
        findline_generation_ = program_.generation();
    }
    std::vector<int>& cache = findline_cache_[static_cast<std::size_t>(kind)];
    const std::size_t at = static_cast<std::size_t>(start) + 1;  // start may be 0 or -1
    if (start >= -1 && at < cache.size() && cache[at] != 0) return cache[at] - 1;
    const std::optional<int> found = search(kind, {}, start, 1);
    if (found && start >= -1 && start <= program_.count() + 1) {
        if (cache.size() <= at) cache.resize(static_cast<std::size_t>(program_.count()) + 3, 0);
        cache[at] = *found + 1;
    }
    return found;
}

void Engine::push_frame(std::string name, int return_line, bool error_handler) {
    if (static_cast<int>(call_stack_.size()) >= kMaxCallDepth) {
        report_error("(DoPrg) More than " + std::to_string(kMaxCallDepth) + " nested calls.",
                     Severity::Fatal, failures::out_of_stack().platform_text());
        return;
    }
    call_stack_.push_back({std::move(name), return_line, error_handler});
    if (error_handler) ++error_handlers_running_;
}

void Engine::pop_frame() {
    if (call_stack_.back().error_handler) --error_handlers_running_;
    call_stack_.pop_back();
}

void Engine::return_from_sub() {
    if (call_stack_.empty()) {
        finished_ = true;
        return;
    }
    const int return_line = call_stack_.back().return_line;
    pop_frame();
    if (return_line == 0) {
        finished_ = true;
        return;
    }
    jump_to(return_line);
}

namespace statements {
namespace {

void jump_if_found(Engine& e, std::optional<int> line) {
    if (line) e.jump_to(*line);
}

}  // namespace

void if_(Engine& e) {
    if (!eval_boolean(e, e.slots()))
        jump_if_found(e, e.findline(BlockKind::EndIf, {}, e.current_line() + 1, e.quiet()));
}

void ifnot(Engine& e) {
    if (eval_boolean(e, e.slots()))
        jump_if_found(e, e.findline(BlockKind::EndIf, {}, e.current_line() + 1, e.quiet()));
}

void else_(Engine& e) {
    jump_if_found(e, e.findline(BlockKind::EndIf, {}, e.current_line() + 1, e.quiet()));
}

void nothing(Engine&) {}

void while_(Engine& e) {
    if (!eval_boolean(e, e.slots()))
        jump_if_found(e, e.findline(BlockKind::EndWhile, {}, e.current_line() + 1, e.quiet()));
}

void endwhile(Engine& e) {
    jump_if_found(e, e.findline(BlockKind::While, {}, e.current_line() - 1, e.quiet()));
}

void until(Engine& e) {
    if (!eval_boolean(e, e.slots()))
        jump_if_found(e, e.findline(BlockKind::Repeat, {}, e.current_line() - 1, e.quiet()));
}

void goto_(Engine& e) {
    jump_if_found(e, e.findline(BlockKind::Goto, e.slots()[1], 0, e.quiet()));
}

void call(Engine& e) {
    const Slots slots = e.slots();
    e.push_frame(slots[1], e.current_line());
    const std::optional<int> sub = e.findline(BlockKind::Sub, slots[1], 0, e.quiet());
    if (!sub) {  // a quiet call of a missing subroutine does nothing
        e.pop_frame();
        return;
    }
    e.jump_to(*sub);
    e.publish_parameters(slots, 2);
}

void endsub(Engine& e) {
    e.return_from_sub();
}

void end(Engine& e) {
    e.end_run(0);
}

void load(Engine& e) {
    const Slots slots = e.slots();
    e.read_prg(slots[1], e.current_line());
    e.publish_parameters(slots, 2);
}

}  // namespace statements
}  // namespace quiller
