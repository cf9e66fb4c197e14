// Inputs of the differential test: the grammar of inputs.txt (see the head of that file), the
// inputs of the reference tables, and generated values. A fixed seed makes every run test the
// same inputs.
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

#include "differential.hpp"

namespace quiller::differential {
namespace {

// The text between the quotes at `p` with its escapes resolved; `p` moves past the closing
// quote (or `close`, for a [chars] item).
std::string unescape(std::string_view s, std::size_t& p, char close) {
    std::string out;
    for (++p; p < s.size() && s[p] != close; ++p) {
        if (s[p] != '\\' || p + 1 >= s.size()) {
            out += s[p];
            continue;
        }
        const char c = s[++p];
        if (c == 'x' && p + 2 < s.size()) {
            out += static_cast<char>(std::stoi(std::string(s.substr(p + 1, 2)), nullptr, 16));
            p += 2;
        } else {
            out += c == 't' ? '\t' : c == 'r' ? '\r' : c == 'n' ? '\n' : c;
        }
    }
    if (p >= s.size()) throw std::runtime_error("unclosed text");
    ++p;
    return out;
}

void add_items(std::string_view line, std::vector<Grammar::Alternative>& rule) {
    for (std::size_t p = 0; p < line.size();) {
        if (line[p] == ' ') {
            ++p;
            continue;
        }
        int weight = 1;
        if (std::isdigit(static_cast<unsigned char>(line[p]))) {
            const std::size_t star = line.find('*', p);
            weight = std::stoi(std::string(line.substr(p, star - p)));
            p = star + 1;
        }
        if (line[p] == '[') {
            for (const char c : unescape(line, p, ']')) rule.push_back({std::string(1, c), 1});
        } else if (line[p] == '"') {
            rule.push_back({unescape(line, p, '"'), weight});
        } else {
            throw std::runtime_error("expected \"text\" or [chars]");
        }
    }
}

std::string random_case(Rng& r, std::string s) {
    const int mode = r.below(4);
    for (char& c : s) {
        const auto b = static_cast<unsigned char>(c);
        if (mode == 1 || (mode == 3 && r.chance(50))) c = static_cast<char>(std::toupper(b));
        if (mode == 2) c = static_cast<char>(std::tolower(b));
    }
    return s;
}

}  // namespace

Grammar::Grammar(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("can't read " + path);
    std::string line, name;
    for (int n = 1; std::getline(in, line); ++n) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || line[0] == '#') continue;
        try {
            if (line[0] != ' ') {
                const std::size_t colon = line.find(':');
                if (colon == std::string::npos) throw std::runtime_error("expected name:");
                name = line.substr(0, colon);
                line.erase(0, colon + 1);
            }
            add_items(line, rules_[name]);
        } catch (const std::exception& e) {
            throw std::runtime_error(path + ":" + std::to_string(n) + ": " + e.what());
        }
    }
}

const std::vector<Grammar::Alternative>& Grammar::rule(std::string_view name) const {
    const auto it = rules_.find(name);
    if (it == rules_.end()) throw std::runtime_error("no rule " + std::string(name));
    return it->second;
}

std::string Grammar::expand(std::string_view name, Rng& r, Vars& vars) const {
    const std::vector<Alternative>& alternatives = rule(name);
    int total = 0;
    for (const Alternative& a : alternatives) total += a.weight;
    int at = r.below(total);
    for (const Alternative& a : alternatives) {
        if (at < a.weight) return fill(a.text, r, vars);
        at -= a.weight;
    }
    return {};
}

std::vector<std::string> Grammar::all(std::string_view name) const {
    Rng r(0);
    Vars vars;
    std::vector<std::string> out;
    for (const Alternative& a : rule(name)) out.push_back(fill(a.text, r, vars));
    return out;
}

std::string Grammar::fill(std::string_view text, Rng& r, Vars& vars) const {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t close = text[i] == '{' ? text.find('}', i) : std::string_view::npos;
        if (close == std::string_view::npos) {
            out += text[i];
            continue;
        }
        out += reference(text.substr(i + 1, close - i - 1), r, vars);
        i = close;
    }
    return out;
}

std::string Grammar::reference(std::string_view ref, Rng& r, Vars& vars) const {
    if (ref.starts_with('#')) {
        char* end = nullptr;
        const long low = std::strtol(ref.data() + 1, &end, 10);
        const long high = std::strtol(end + 1, nullptr, 10);
        return std::to_string(low + r.below(static_cast<int>(high - low + 1)));
    }
    if (ref.starts_with('$')) {  // {$v} or {$v^}
        const std::string& kept =
            vars[std::string(ref.substr(1, ref.size() - 1 - ref.ends_with('^')))];
        return ref.ends_with('^') ? random_case(r, kept) : kept;
    }
    std::string kept;
    if (const std::size_t eq = ref.find('='); eq != std::string_view::npos) {
        kept = ref.substr(0, eq);
        ref.remove_prefix(eq + 1);
    }
    const std::size_t mark = std::min(ref.find_first_of("*?^"), ref.size());
    const std::string_view name = ref.substr(0, mark), how = ref.substr(mark);
    int low = 1, high = 1;
    std::string out;
    if (how.starts_with('*')) {
        char* end = nullptr;
        low = static_cast<int>(std::strtol(how.data() + 1, &end, 10));
        high = static_cast<int>(std::strtol(end + 1, nullptr, 10));
    }
    if (how.starts_with('?') && !r.chance(std::atoi(how.data() + 1))) low = high = 0;
    for (int n = low + r.below(high - low + 1); n > 0; --n) out += expand(name, r, vars);
    if (how == "^") out = random_case(r, std::move(out));
    if (!kept.empty()) vars[kept] = out;
    return out;
}

// --- Values and inputs -----------------------------------------------------------------------

namespace {

constexpr int kGeneratedNumberTexts = 6000;
constexpr int kGeneratedDateTexts = 8000;
constexpr int kGeneratedJunk = 1500;
constexpr int kGeneratedNumbers = 4000;
constexpr int kGeneratedDates = 4000;
constexpr int kGeneratedNumberFormats = 5000;
constexpr int kGeneratedDateFormats = 5000;
constexpr int kCrossedFormats = 400;  // number pictures with dates and date pictures with numbers
constexpr int kIniFiles = 500;

// A "-value" of the grammar: numbers joined by + - * / from left to right, or "DAY TIME".
double number_of(const std::string& text) {
    if (const std::size_t blank = text.find(' '); blank != std::string::npos) {
        const double day = number_of(text.substr(0, blank)),
                     time = number_of(text.substr(blank + 1));
        return day < 0 ? day - time : day + time;
    }
    const char* p = text.c_str();
    char* end = nullptr;
    double v = std::strtod(p, &end);
    while (*end == '+' || *end == '-' || *end == '*' || *end == '/') {
        const char op = *end;
        const double w = std::strtod(end + 1, &end);
        v = op == '+' ? v + w : op == '-' ? v - w : op == '*' ? v * w : v / w;
    }
    return v;
}

double value(const Grammar& g, std::string_view rule, Rng& r) {
    return number_of(g.expand(rule, r));
}

double format_number_value(const Grammar& g, Rng& r) {
    return (r.chance(35) ? -1 : 1) * value(g, "format-number-value", r);
}

// The first column of a reference table, or its first two (value and format).
std::vector<std::vector<std::string>> reference_rows(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<std::vector<std::string>> rows;
    std::string line;
    for (int n = 1; std::getline(in, line); ++n) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const std::size_t tab = line.find('\t');
        if (n > 1)
            rows.push_back(
                {line.substr(0, tab), line.substr(tab + 1, line.find('\t', tab + 1) - tab - 1)});
    }
    return rows;
}

// Drops repeated texts, keeping the first of each.
void unique(std::vector<std::string>& texts) {
    std::set<std::string> seen;
    std::erase_if(texts, [&](const std::string& t) { return !seen.insert(t).second; });
}

std::vector<double> values(const Grammar& g, std::string_view rule) {
    std::vector<double> out;
    for (const std::string& text : g.all(rule)) out.push_back(number_of(text));
    return out;
}

}  // namespace

Inputs make_inputs(const Grammar& g, const std::string& reference_dir) {
    Inputs in;
    Rng r(20011231);
    in.number_texts = g.all("number-picked");
    for (const auto& row : reference_rows(reference_dir + "/number-recognition.tsv"))
        in.number_texts.push_back(row[0]);
    for (int i = 0; i < kGeneratedNumberTexts; ++i)
        in.number_texts.push_back(g.expand("number-text", r));
    in.date_texts = g.all("date-picked");
    for (const auto& row : reference_rows(reference_dir + "/date-recognition.tsv"))
        in.date_texts.push_back(row[0]);
    for (int i = 0; i < kGeneratedDateTexts; ++i) in.date_texts.push_back(g.expand("date-text", r));
    for (int i = 0; i < kGeneratedJunk; ++i) {
        in.number_texts.push_back(g.expand("junk", r));
        in.date_texts.push_back(in.number_texts.back());
    }
    unique(in.number_texts);
    unique(in.date_texts);
    in.numbers = values(g, "number-value-picked");
    for (int i = 0; i < kGeneratedNumbers; ++i) in.numbers.push_back(value(g, "number-value", r));
    in.dates = values(g, "date-value-picked");
    for (int i = 0; i < kGeneratedDates; ++i) in.dates.push_back(value(g, "date-value", r));
    return in;
}

std::vector<FormatCase> make_format_cases(const Grammar& g, const std::string& reference_dir) {
    std::vector<FormatCase> cases;
    for (const bool as_date : {false, true})
        for (const auto& row : reference_rows(
                 reference_dir + (as_date ? "/date-formats.tsv" : "/number-formats.tsv")))
            cases.push_back({std::strtod(row[0].c_str(), nullptr), row[1], as_date});
    Rng r(20260422);
    for (const std::string& name : g.all("named-number-format"))
        for (int i = 0; i < 60; ++i) cases.push_back({format_number_value(g, r), name, false});
    for (const std::string& name : g.all("named-date-format"))
        for (int i = 0; i < 80; ++i)
            cases.push_back({value(g, "format-date-value", r), name, true});
    for (int i = 0; i < kGeneratedNumberFormats; ++i)
        cases.push_back({format_number_value(g, r), g.expand("number-picture", r), false});
    for (int i = 0; i < kGeneratedDateFormats; ++i)
        cases.push_back({value(g, "format-date-value", r), g.expand("date-picture", r), true});
    for (int i = 0; i < kCrossedFormats; ++i) {
        cases.push_back({value(g, "format-date-value", r), g.expand("number-picture", r), true});
        cases.push_back({value(g, "format-date-value", r), g.expand("date-picture", r), false});
    }
    return cases;
}

// --- INI files -------------------------------------------------------------------------------

namespace {

// A file of sections and keys in various cases and spellings, with the sections and keys it
// names.
struct IniDraft {
    std::vector<std::string> lines, sections;
    std::vector<std::pair<std::string, std::string>> keys;  // (section, key)
};

IniDraft draft_ini(const Grammar& g, Rng& r) {
    IniDraft d;
    if (r.chance(15)) d.lines.push_back("; leading comment");
    if (r.chance(10)) d.lines.push_back("Key=before any section");
    for (int s = r.chance(3) ? 0 : 1 + r.below(4); s > 0; --s) {
        Grammar::Vars vars{{"name", random_case(r, g.expand("ini-section", r))}};
        d.lines.push_back(g.expand("ini-header", r, vars));
        d.sections.push_back(vars["name"]);
        for (int k = r.below(6); k > 0; --k) {
            if (r.chance(15)) d.lines.push_back(g.expand("ini-blank", r));
            if (r.chance(8)) d.lines.push_back(g.expand("ini-junk", r));
            vars["key"] = random_case(r, g.expand("ini-key", r));
            vars["value"] = g.expand("ini-value", r);
            d.lines.push_back(g.expand("ini-key-line", r, vars));
            d.keys.emplace_back(d.sections.back(), vars["key"]);
        }
        if (r.chance(20)) d.lines.push_back("");
    }
    return d;
}

// The lines joined by one kind of break or a mix, the last one now and then without its break.
std::string join(const Grammar& g, Rng& r, const std::vector<std::string>& lines) {
    const std::string chosen = g.expand("ini-break", r);
    std::string bytes;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        bytes += lines[i];
        if (i + 1 == lines.size() && r.chance(20)) break;
        bytes += chosen != "mixed" ? chosen : r.chance(50) ? "\r\n" : "\n";
    }
    return bytes;
}

// "A|B|C" as {A, B, C}.
std::array<std::string, 3> fields(const std::string& text) {
    const std::size_t bar = text.find('|'), bar2 = text.find('|', bar + 1);
    return {text.substr(0, bar), text.substr(bar + 1, bar2 - bar - 1), text.substr(bar2 + 1)};
}

// The reads of "ini-reads" for every key written; every section with a missing key; a missing
// section.
std::vector<IniQuery> ini_queries(const Grammar& g, Rng& r, const IniDraft& d) {
    std::vector<IniQuery> out;
    for (const auto& [section, key] : d.keys) {
        Grammar::Vars vars{{"section", section}, {"key", key}};
        std::istringstream reads(g.expand("ini-reads", r, vars));
        for (std::string read; std::getline(reads, read);) {
            auto [s, k, fallback] = fields(read);
            out.push_back({s, k, fallback});
        }
    }
    for (const std::string& section : d.sections) out.push_back({section, "Missing", "d "});
    out.push_back({"No Such Section", "Key", "none"});
    return out;
}

// One to four edits of "ini-edit" on a key of the file.
std::vector<IniEdit> ini_edits(const Grammar& g, Rng& r, const IniDraft& d) {
    std::vector<IniEdit> out;
    for (int n = 1 + r.below(4); n > 0; --n) {
        const auto& [section, key] = d.keys.empty()
                                         ? std::pair<std::string, std::string>("General", "Key")
                                         : d.keys[r.below(static_cast<int>(d.keys.size()))];
        Grammar::Vars vars{{"section", section}, {"key", key}};
        auto [s, k, value] = fields(g.expand("ini-edit", r, vars));
        out.push_back({s, k, std::nullopt});
        if (!value.empty()) out.back().value = value.substr(1);
    }
    return out;
}

}  // namespace

std::vector<IniCase> make_ini_cases(const Grammar& g) {
    Rng r(19991231);
    std::vector<IniCase> cases;
    for (int i = 0; i < kIniFiles; ++i) {
        const IniDraft d = draft_ini(g, r);
        const std::string bytes = join(g, r, d.lines);
        std::vector<IniQuery> queries = ini_queries(g, r, d);
        cases.push_back({bytes, std::move(queries), ini_edits(g, r, d)});
    }
    return cases;
}

}  // namespace quiller::differential
