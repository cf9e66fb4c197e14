// The differential test of the value layer, the formatter and the INI profile code against the
// system's own functions (oleaut32 with the en-US locale, the profile-string functions): shared
// declarations.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quiller::differential {

// --- Inputs (differential_inputs.cpp, inputs.txt) ------------------------------------------

// splitmix64: small, fast and the same everywhere.
class Rng {
  public:
    explicit Rng(std::uint64_t seed) : state_(seed) {}
    std::uint64_t next() {
        std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return z ^ (z >> 31);
    }
    int below(int n) { return static_cast<int>(next() % static_cast<std::uint64_t>(n)); }
    bool chance(int percent) { return below(100) < percent; }

  private:
    std::uint64_t state_;
};

// The rules of inputs.txt; throws std::runtime_error on a file it can't read.
class Grammar {
  public:
    struct Alternative {
        std::string text;
        int weight;
    };
    using Vars = std::map<std::string, std::string, std::less<>>;

    explicit Grammar(const std::string& path);
    // One expansion of the rule; `vars` holds the texts kept by {v=rule}.
    std::string expand(std::string_view rule, Rng& r, Vars& vars) const;
    std::string expand(std::string_view rule, Rng& r) const {
        Vars vars;
        return expand(rule, r, vars);
    }
    // Every alternative of a rule of hand-picked cases.
    std::vector<std::string> all(std::string_view rule) const;

  private:
    const std::vector<Alternative>& rule(std::string_view name) const;
    std::string fill(std::string_view text, Rng& r, Vars& vars) const;
    std::string reference(std::string_view ref, Rng& r, Vars& vars) const;

    std::map<std::string, std::vector<Alternative>, std::less<>> rules_;
};

struct Inputs {
    std::vector<std::string> number_texts;  // read as numbers
    std::vector<std::string> date_texts;    // read as dates
    std::vector<double> numbers;            // written in the general number form
    std::vector<double> dates;              // written in the general date form
};

// Hand-picked inputs, the inputs of the reference tables in `reference_dir`, and generated ones.
Inputs make_inputs(const Grammar& g, const std::string& reference_dir);

// A value written with a format: by format_number (and the system with a VT_R8) or, `as_date`,
// by format_date (and the system with a VT_DATE).
struct FormatCase {
    double value = 0;
    std::string format;
    bool as_date = false;
};

// The rows of the reference formatting tables, the named formats and generated pictures.
std::vector<FormatCase> make_format_cases(const Grammar& g, const std::string& reference_dir);

// An INI file, the reads to compare on it, and a series of edits to apply to two copies of it.
struct IniQuery {
    std::string section;
    std::string key;
    std::string fallback;
};

// An empty key deletes the section; no value deletes the key.
struct IniEdit {
    std::string section;
    std::string key;
    std::optional<std::string> value;
};

struct IniCase {
    std::string bytes;
    std::vector<IniQuery> queries;
    std::vector<IniEdit> edits;
};

// Generated files with their reads and edits.
std::vector<IniCase> make_ini_cases(const Grammar& g);

// --- The system's conversions (differential_system.cpp) ------------------------------------

std::optional<double> system_number(std::string_view text);  // VarR8FromStr
std::optional<double> system_date(std::string_view text);    // VarDateFromStr
std::optional<std::string> system_number_text(double v);     // VT_R8 to VT_BSTR
std::optional<std::string> system_date_text(double serial);  // VT_DATE to VT_BSTR
int system_current_year();
// CompareStringEx with the invariant locale and NORM_IGNORECASE: below, at or above 0.
int system_name_order(std::string_view a, std::string_view b);
// VarFormat (through VarTokenizeFormatString and VarFormatFromTokens with LCID 0x409).
std::optional<std::string> system_format(double v, std::string_view format, bool as_date);

// The profile-string functions on a file. The reader uses a buffer
// of 255 characters, as `readini` does.
std::string system_profile_string(const std::string& path, const std::string& section,
                                  const std::string& key, const std::string& fallback);
// An empty `key` deletes the section, a missing `value` the key.
bool system_write_profile(const std::string& path, const std::string& section,
                          const std::string& key, const std::optional<std::string>& value);

// --- The report (differential_report.cpp) --------------------------------------------------

// A text as the report writes it: printable ASCII as it is, "\" and the double quote escaped,
// any other byte as \xNN.
std::string escape(std::string_view text);
// A number with all its digits ("%.17g").
std::string exact_text(double v);

// Counts comparisons and prints every difference, known or new. The known differences come from
// a file (see the head of known_differences.txt); a file that can't be read or has a bad line
// throws std::runtime_error.
class Report {
  public:
    Report(const std::string& known_file, bool quiet);
    ~Report();

    // Counts one comparison of `kind` and reports it when `difference` names how it differs.
    void compare(std::string_view kind, const char* difference, std::string_view input,
                 const std::string& ours, const std::string& system);
    // Prints how often each known difference served (unused ones may be stale) and the counts by
    // kind and in all; the exit status: 0 when no difference is new, else 1.
    int summary() const;

  private:
    struct Known;
    struct Tally {
        int compared = 0;
        int known = 0;
        int unknown = 0;
    };
    std::vector<Known> known_;
    bool quiet_;
    std::map<std::string, Tally, std::less<>> by_kind_;
};

// --- The comparisons -----------------------------------------------------------------------

// Every format case with the formatter and the system (differential_format.cpp).
void compare_formats(const std::vector<FormatCase>& cases, Report& report);

// Generated INI files read and edited by Quiller's profile code and by the system, in a folder
// of their own under `work_dir` (differential_ini.cpp). False when the files can't be made.
bool compare_ini(const std::vector<IniCase>& cases, const std::string& work_dir, Report& report);

}  // namespace quiller::differential
