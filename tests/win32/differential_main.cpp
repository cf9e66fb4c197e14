// quiller_differential: reads and writes thousands of numbers and dates both with Quiller's value
// layer and with the system's own conversions (oleaut32, en-US), formats them with Quiller's
// formatter and with VarFormat, reads and edits generated INI files with Quiller's profile code
// and with the profile-string functions, and reports every difference.
//
//   quiller_differential KNOWN_DIFFERENCES_FILE INPUTS_FILE REFERENCE_DIR [--quiet]
//
// The inputs come from the grammar in INPUTS_FILE (inputs.txt) and the reference tables. A
// difference listed in the known-differences file is reported as known; any other one fails
// the run (exit status 1). --quiet leaves the known ones out of the report. The INI files go to
// a folder of their own in the temporary folder, removed at the end unless the environment
// variable QUILLER_DIFFERENTIAL_KEEP is set.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>

#include "differential.hpp"
#include "sync/name_order.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller::differential {
namespace {

// What a reading or a writing gave, as the report shows it.
using Outcome = std::optional<std::string>;

std::string number_outcome(std::optional<double> v) {
    return v ? exact_text(*v) : "(not accepted)";
}

// How a reading differs: nothing when it doesn't; "only-quiller" or "only-system" when one side
// alone accepts the text; "rounding" when the numbers are a few units in the last place apart;
// else "value". Numbers within `tolerance` count as the same.
const char* reading_difference(std::optional<double> ours, std::optional<double> system,
                               double tolerance) {
    if (!ours && !system) return nullptr;
    if (!system) return "only-quiller";
    if (!ours) return "only-system";
    const double gap = std::fabs(*ours - *system);
    if (gap <= tolerance) return nullptr;
    const double scale = std::max(std::fabs(*ours), std::fabs(*system));
    return gap <= scale * 1e-14 ? "rounding" : "value";
}

using Reader = std::function<std::optional<double>(std::string_view)>;

void compare_reading(const char* kind, const std::vector<std::string>& texts, const Reader& ours,
                     const Reader& system, double tolerance, Report& report) {
    for (const std::string& text : texts) {
        const std::optional<double> mine = ours(text), theirs = system(text);
        report.compare(kind, reading_difference(mine, theirs, tolerance), text,
                       number_outcome(mine), number_outcome(theirs));
    }
}

// True when `v` lies exactly halfway between two 15-digit decimals, where rounding half up and
// half to even part.
bool is_tie_at_15_digits(double v) {
    char buffer[64];
    const char* end = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(v),
                                    std::chars_format::scientific, 40)
                          .ptr;
    std::string digits;
    for (const char* p = buffer; p != end && *p != 'e'; ++p)
        if (*p != '.') digits += *p;
    return digits.size() > 16 && digits[15] == '5' &&
           digits.find_first_not_of('0', 16) == std::string::npos;
}

void compare_writing(const char* kind, const std::vector<double>& values,
                     const std::function<std::string(double)>& ours,
                     const std::function<Outcome(double)>& system, Report& report) {
    for (const double v : values) {
        const std::string mine = ours(v);
        const Outcome theirs = system(v);
        const char* difference = nullptr;
        if (!theirs || mine != *theirs) difference = is_tie_at_15_digits(v) ? "tie" : "text";
        report.compare(kind, difference, number_outcome(v), "\"" + mine + "\"",
                       theirs ? "\"" + *theirs + "\"" : "(failed)");
    }
}

// Values of the number texts Quiller reads are written back too.
std::vector<double> numbers_to_write(const Inputs& in) {
    std::vector<double> values = in.numbers;
    for (const std::string& text : in.number_texts) {
        if (std::optional<double> v = value::parse_locale_number(text)) values.push_back(*v);
    }
    return values;
}

int sign(int v) {
    return (v > 0) - (v < 0);
}

std::string order_text(int s) {
    return s < 0 ? "less" : s > 0 ? "greater" : "equal";
}

// Pairs "A|B" of "name-picked" and generated "name-pair": the order of directory synchronisation
// against the system's case-blind order. Where the system holds two names equal that differ
// beyond case (ignorable characters, for instance), Quiller keeps them apart by design; every
// other disagreement is a difference.
void compare_names(const Grammar& g, Report& report) {
    std::vector<std::string> pairs = g.all("name-picked");
    Rng r(0x5CA11);
    for (int i = 0; i < 3000; ++i) pairs.push_back(g.expand("name-pair", r));
    for (int i = 0; i < 1000; ++i) {  // case pairs
        const std::string word = g.expand("name-word", r);
        pairs.push_back(word + "|" + (r.chance(50) ? text::to_upper(word) : text::to_lower(word)));
    }
    for (const std::string& pair : pairs) {
        const std::size_t bar = pair.find('|');
        const std::string a = pair.substr(0, bar), b = pair.substr(bar + 1);
        const int ours = sign(sync::compare_names(a, b));
        const int system = sign(system_name_order(a, b));
        const char* difference = nullptr;
        if (ours != system && !(system == 0 && sync::fold_name(a) != sync::fold_name(b)))
            difference = ours == 0 || system == 0 ? "equal" : "order";
        report.compare("name-order", difference, pair, order_text(ours), order_text(system));
    }
}

int run(const std::string& known_file, const std::string& grammar_file,
        const std::string& reference_dir, bool quiet) {
    Report report(known_file, quiet);
    const Grammar grammar(grammar_file);
    const Inputs in = make_inputs(grammar, reference_dir);
    compare_reading("number", in.number_texts, value::parse_locale_number, system_number, 0,
                    report);
    const int year = system_current_year();
    // Day numbers count as the same within half a second.
    compare_reading(
        "date", in.date_texts, [year](std::string_view t) { return value::parse_date(t, year); },
        system_date, 0.5 / 86400, report);
    compare_writing("number-text", numbers_to_write(in), value::format_general_number,
                    system_number_text, report);
    compare_writing("date-text", in.dates, value::format_general_date, system_date_text, report);
    compare_formats(make_format_cases(grammar, reference_dir), report);
    compare_names(grammar, report);
    if (!compare_ini(make_ini_cases(grammar), std::filesystem::temp_directory_path().string(),
                     report))
        return 2;
    return report.summary();
}

}  // namespace
}  // namespace quiller::differential

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr,
                     "usage: quiller_differential KNOWN_DIFFERENCES INPUTS REFERENCE_DIR "
                     "[--quiet]\n");
        return 2;
    }
    const bool quiet = argc > 4 && std::strcmp(argv[4], "--quiet") == 0;
    try {
        return quiller::differential::run(argv[1], argv[2], argv[3], quiet);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "quiller_differential: %s\n", e.what());
        return 2;
    }
}
