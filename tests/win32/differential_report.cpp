// The known-differences file:
//
//   # comment
//   KIND "INPUT" REASON
//   KIND re"PATTERN" REASON
//
// INPUT is written exactly as the report writes it (see escape()), so the text between the
// quotes is taken as it stands; a "\" only keeps the character after it from ending the quotes.
// PATTERN is an ECMAScript regular expression that must match the whole of that form. Every
// entry needs a reason. The report prints one line per difference, known ones with the line of
// their entry.
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <regex>

#include "differential.hpp"

namespace quiller::differential {
namespace {

// KIND, then "INPUT" or re"PATTERN" (the text between the quotes kept as written), then REASON.
std::optional<KnownDifference> parse_line(const std::string& line, int number) {
    static const std::regex entry(R"re(\s*(\S+)\s+(re)?"((?:[^"\\]|\\.)*)"\s*(\S.*))re");
    std::smatch m;
    if (!std::regex_match(line, m, entry)) return std::nullopt;
    KnownDifference k{m[1].str(), m[3].str(), nullptr, m[4].str(), number};
    if (m[2].matched) {
        try {
            k.pattern = std::make_shared<const std::regex>(k.input, std::regex::ECMAScript);
        } catch (const std::regex_error&) {
            return std::nullopt;
        }
    }
    return k;
}

bool matches(const KnownDifference& k, std::string_view input) {
    if (!k.pattern) return k.input == input;
    return std::regex_match(input.begin(), input.end(), *k.pattern);
}

}  // namespace

std::optional<std::vector<KnownDifference>> load_known_differences(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "can't read the known differences '%s'\n", path.c_str());
        return std::nullopt;
    }
    std::vector<KnownDifference> known;
    std::string line;
    for (int n = 1; std::getline(in, line); ++n) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const std::size_t first = line.find_first_not_of(" \t");
        if (first == std::string::npos || line[first] == '#') continue;
        std::optional<KnownDifference> k = parse_line(line, n);
        if (!k) {
            std::fprintf(stderr,
                         "%s:%d: expected KIND \"INPUT\" REASON or KIND re\"PATTERN\" REASON\n",
                         path.c_str(), n);
            return std::nullopt;
        }
        known.push_back(std::move(*k));
    }
    return known;
}

KnownDifference* find_known(std::vector<KnownDifference>& known, std::string_view kind,
                            std::string_view input) {
    for (KnownDifference& k : known) {
        if (k.kind == kind && matches(k, input)) return &k;
    }
    return nullptr;
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

bool ascii_iequals(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [&](char x, char y) { return lower(x) == lower(y); });
}

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
