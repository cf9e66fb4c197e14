// The report: one line per difference, known ones with the line of the entry that allows them
// (the entries' form is described at the head of known_differences.txt; INPUT is compared with
// escape()'s form as it stands, PATTERN must match the whole of it).
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <regex>
#include <stdexcept>

#include "differential.hpp"

namespace quiller::differential {

struct Report::Known {
    std::string kind;
    std::string input;
    std::optional<std::regex> pattern;  // set for a regular expression
    int line = 0;
    int uses = 0;

    bool matches(std::string_view k, std::string_view shown) const {
        if (k != kind) return false;
        if (!pattern) return input == shown;
        return std::regex_match(shown.begin(), shown.end(), *pattern);
    }
};

Report::Report(const std::string& known_file, bool quiet) : quiet_(quiet) {
    // KIND, then "INPUT" or re"PATTERN" (the text between the quotes kept as written), then a
    // reason.
    static const std::regex entry(R"re(\s*(\S+)\s+(re)?"((?:[^"\\]|\\.)*)"\s*\S.*)re");
    std::ifstream in(known_file, std::ios::binary);
    if (!in) throw std::runtime_error("can't read the known differences '" + known_file + "'");
    std::string line;
    for (int n = 1; std::getline(in, line); ++n) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const std::size_t first = line.find_first_not_of(" \t");
        if (first == std::string::npos || line[first] == '#') continue;
        const auto bad = [&] {
            return std::runtime_error(
                known_file + ":" + std::to_string(n) +
                ": expected KIND \"INPUT\" REASON or KIND re\"PATTERN\" REASON");
        };
        std::smatch m;
        if (!std::regex_match(line, m, entry)) throw bad();
        Known k{m[1].str(), m[3].str(), std::nullopt, n};
        try {
            if (m[2].matched) k.pattern.emplace(k.input, std::regex::ECMAScript);
        } catch (const std::regex_error&) {
            throw bad();
        }
        known_.push_back(std::move(k));
    }
}

Report::~Report() = default;

void Report::compare(std::string_view kind, const char* difference, std::string_view input,
                     const std::string& ours, const std::string& system) {
    auto group = by_kind_.find(kind);
    if (group == by_kind_.end()) group = by_kind_.emplace(std::string(kind), Tally{}).first;
    ++group->second.compared;
    if (!difference) return;
    const std::string full_kind = std::string(kind) + ":" + difference;
    const std::string shown = escape(input);
    const auto it =
        std::ranges::find_if(known_, [&](const Known& k) { return k.matches(full_kind, shown); });
    Known* k = it == known_.end() ? nullptr : &*it;
    ++(k ? group->second.known : group->second.unknown);
    if (k) ++k->uses;
    if (k && quiet_) return;
    std::printf("%s %-24s \"%s\"  quiller: %s  system: %s%s\n", k ? "known" : "NEW  ",
                full_kind.c_str(), shown.c_str(), ours.c_str(), system.c_str(),
                k ? ("  (line " + std::to_string(k->line) + ")").c_str() : "");
}

int Report::summary() const {
    for (const Known& k : known_)
        std::printf("known difference line %d (%s): %d %s\n", k.line, k.kind.c_str(), k.uses,
                    k.uses == 0   ? "uses, maybe stale"
                    : k.uses == 1 ? "use"
                                  : "uses");
    Tally all;
    for (const auto& [kind, t] : by_kind_) {
        std::printf("%-14s %6d comparisons, %5d known differences, %d new\n", kind.c_str(),
                    t.compared, t.known, t.unknown);
        all.compared += t.compared;
        all.known += t.known;
        all.unknown += t.unknown;
    }
    std::printf("differential: %d comparisons, %d known differences, %d new differences\n",
                all.compared, all.known, all.unknown);
    return all.unknown == 0 ? 0 : 1;
}

std::string escape(std::string_view text) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string out;
    for (const char c : text) {
        const auto b = static_cast<unsigned char>(c);
        if (c == '\\' || c == '"') {
            out += '\\';
            out += c;
        } else if (b >= 0x20 && b < 0x7F) {
            out += c;
        } else {
            out += "\\x";
            out += kHex[b >> 4];
            out += kHex[b & 15];
        }
    }
    return out;
}

std::string exact_text(double v) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.17g", v);
    return buffer;
}

}  // namespace quiller::differential
