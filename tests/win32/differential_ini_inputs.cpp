// Generated INI files (fixed seed): sections and keys in various cases and spellings, blanks
// around "=", quotes, comments, duplicates, CR LF, LF or CR breaks, a last line without a
// break, empty values; the reads of every section and key written, and series of edits.
#include <cctype>

#include "differential.hpp"

namespace quiller::differential {
namespace {

constexpr int kFiles = 500;

const char* const kSectionNames[] = {"General", "Options", "Paths", "Two Words", "x", "Dup"};
const char* const kKeyNames[] = {"Key", "Name", "Path", "Value", "Two Words", "k", "Dup"};
const char* const kValues[] = {
    "value",    "two words", "\"quoted\"",   "'single'", "\"unbalanced", "\"a\" b \"c\"",
    "'mixed\"", "\"\"",      "v ; trailing", "x",        "\" padded \"", "C:\\Dir\\file.txt",
    "%TEMP%",   "a=b",       "\"",           "''"};
const char* const kWrittenValues[] = {"new", "",      "two words", "\"q\"",
                                      "x=y", " lead", "trail ",    ";semi"};

std::string random_case(Rng& r, std::string s) {
    const int mode = r.below(4);
    for (char& c : s) {
        if (mode == 1 || (mode == 3 && r.chance(50)))
            c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        if (mode == 2) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return s;
}

std::string header_line(Rng& r, const std::string& name) {
    static const char* const kForms[] = {"[%]",       "[%]",   "[%]",  " [%]", "[ % ]", "[%] ",
                                         "[%]; note", "\t[%]", "[%]x", "[%]]", "[%"};
    std::string form = r.pick(kForms);
    return form.replace(form.find('%'), 1, name);
}

std::string key_line(Rng& r, const std::string& key, const std::string& value) {
    static const char* const kForms[] = {"K=V",       "K=V",     "K=V",   "K = V", "K =V", "K= V",
                                         "\tK\t=\tV", "  K=V  ", "K=V\t", "K=",    "K= ",  "K",
                                         ";K=V",      "# K=V",   "K==V",  " ;K=V"};
    std::string form = r.pick(kForms);
    std::string line;
    for (const char c : form) {
        if (c == 'K') {
            line += key;
        } else if (c == 'V') {
            line += value;
        } else {
            line += c;
        }
    }
    return line;
}

std::string value_text(Rng& r) {
    if (r.chance(3)) return std::string(300, 'L');  // beyond the reader's buffer
    return r.pick(kValues);
}

struct Draft {
    std::vector<std::string> lines;
    std::vector<std::string> sections;
    std::vector<std::pair<std::string, std::string>> keys;  // (section, key)
};

void add_section(Rng& r, Draft& d) {
    const std::string name = random_case(r, r.pick(kSectionNames));
    d.lines.push_back(header_line(r, name));
    d.sections.push_back(name);
    const int keys = r.below(6);
    for (int k = 0; k < keys; ++k) {
        if (r.chance(15)) d.lines.push_back(r.chance(50) ? "" : "   ");
        if (r.chance(8)) d.lines.push_back(r.chance(50) ? "; comment" : "junk line");
        const std::string key = random_case(r, r.pick(kKeyNames));
        d.lines.push_back(key_line(r, key, value_text(r)));
        d.keys.emplace_back(name, key);
    }
    if (r.chance(20)) d.lines.push_back("");
}

std::string join(Rng& r, const std::vector<std::string>& lines) {
    static const char* const kBreaks[] = {"\r\n", "\r\n", "\r\n", "\r\n", "\r\n", "\r\n", "\n",
                                          "\n",   "\n",   "\n",   "\n",   "\r",   "mixed"};
    const std::string chosen = r.pick(kBreaks);
    std::string bytes;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        bytes += lines[i];
        const bool last = i + 1 == lines.size();
        if (last && r.chance(20)) break;  // no break after the last line
        bytes += chosen != "mixed" ? chosen : r.chance(50) ? "\r\n" : "\n";
    }
    return bytes;
}

void add_queries(Rng& r, const Draft& d, std::vector<IniQuery>& out) {
    static const char* const kFallbacks[] = {"", "", "def", "def  ", "  def", "two words"};
    for (const auto& [section, key] : d.keys) {
        out.push_back({section, key, r.pick(kFallbacks)});
        if (r.chance(30)) out.push_back({random_case(r, section), random_case(r, key), "d"});
        if (r.chance(15)) out.push_back({" " + section + " ", "\t" + key + " ", "d"});
        if (r.chance(10)) out.push_back({section, ";" + key, "d"});
    }
    for (const std::string& section : d.sections) out.push_back({section, "Missing", "d "});
    out.push_back({"No Such Section", "Key", "none"});
}

void add_edits(Rng& r, const Draft& d, std::vector<IniEdit>& out) {
    const int n = 1 + r.below(4);
    for (int i = 0; i < n; ++i) {
        const bool has_key = !d.keys.empty();
        const auto& known = has_key ? d.keys[r.below(static_cast<int>(d.keys.size()))]
                                    : std::pair<std::string, std::string>("General", "Key");
        const std::string value = r.pick(kWrittenValues);
        switch (r.below(7)) {
            case 0:
            case 1:
                out.push_back({random_case(r, known.first), random_case(r, known.second), value});
                break;
            case 2:
                out.push_back({known.first, "Added", value});
                break;
            case 3:
                out.push_back({"New Section", r.chance(50) ? "Key" : "Other", value});
                break;
            case 4:
                out.push_back({known.first, known.second, std::nullopt});
                break;
            case 5:
                out.push_back({known.first, "", std::nullopt});
                break;
            default:
                out.push_back({known.first, known.second, ""});
        }
    }
}

IniCase make_case(Rng& r) {
    Draft d;
    if (r.chance(15)) d.lines.push_back("; leading comment");
    if (r.chance(10)) d.lines.push_back("Key=before any section");
    const int sections = r.chance(3) ? 0 : 1 + r.below(4);
    for (int s = 0; s < sections; ++s) add_section(r, d);
    IniCase c;
    c.bytes = join(r, d.lines);
    add_queries(r, d, c.queries);
    add_edits(r, d, c.edits);
    return c;
}

}  // namespace

std::vector<IniCase> make_ini_cases() {
    Rng r(19991231);
    std::vector<IniCase> cases;
    for (int i = 0; i < kFiles; ++i) cases.push_back(make_case(r));
    return cases;
}

}  // namespace quiller::differential
