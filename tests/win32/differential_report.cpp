// The report: one line per difference, known ones with the line of their entry.
#include <cstdio>

#include "differential.hpp"

namespace quiller::differential {

void Report::compare(std::string_view kind, const char* difference, std::string_view input,
                     const std::string& ours, const std::string& system) {
    ++tally_.compared;
    auto group = by_kind_.find(kind);
    if (group == by_kind_.end()) group = by_kind_.emplace(std::string(kind), Tally{}).first;
    ++group->second.compared;
    if (!difference) return;
    const std::string full_kind = std::string(kind) + ":" + difference;
    const std::string shown = escape(input);
    KnownDifference* k = find_known(known_, full_kind, shown);
    if (k) {
        ++k->uses;
        ++tally_.known;
        ++group->second.known;
        if (quiet_) return;
    } else {
        ++tally_.unknown;
        ++group->second.unknown;
    }
    std::printf("%s %-24s \"%s\"  quiller: %s  system: %s%s\n", k ? "known" : "NEW  ",
                full_kind.c_str(), shown.c_str(), ours.c_str(), system.c_str(),
                k ? ("  (line " + std::to_string(k->line) + ")").c_str() : "");
}

}  // namespace quiller::differential
