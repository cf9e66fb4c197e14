// The differential test of the value layer against the system's own conversions (oleaut32 with
// the en-US locale): shared declarations.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

namespace quiller::differential {

// --- Inputs (differential_inputs.cpp) ------------------------------------------------------

struct Inputs {
    std::vector<std::string> number_texts;  // read as numbers
    std::vector<std::string> date_texts;    // read as dates
    std::vector<double> numbers;            // written in the general number form
    std::vector<double> dates;              // written in the general date form
};

// Hand-picked inputs, the inputs of the reference tables in `reference_dir`, and generated ones
// (the same on every run).
Inputs make_inputs(const std::string& reference_dir);

// --- The system's conversions (differential_system.cpp) ------------------------------------

std::optional<double> system_number(std::string_view text);  // VarR8FromStr
std::optional<double> system_date(std::string_view text);    // VarDateFromStr
std::optional<std::string> system_number_text(double v);     // VT_R8 to VT_BSTR
std::optional<std::string> system_date_text(double serial);  // VT_DATE to VT_BSTR
int system_current_year();

// --- Known differences (differential_allow.cpp) --------------------------------------------

// One entry of the known-differences file: a kind ("number", "date", "number-text",
// "date-text"), an input written as in the report, or a regular expression over that form, and
// the reason the difference is accepted.
struct KnownDifference {
    std::string kind;
    std::string input;
    std::shared_ptr<const std::regex> pattern;  // set for a regular expression
    std::string reason;
    int line = 0;
    int uses = 0;
};

// Reads the file; nothing (and a message on stderr) when it can't be read or has a bad line.
std::optional<std::vector<KnownDifference>> load_known_differences(const std::string& path);

// The entry that allows a difference of `kind` for `input` (as written in the report), or null.
KnownDifference* find_known(std::vector<KnownDifference>& known, std::string_view kind,
                            std::string_view input);

// A text as the report writes it: printable ASCII as it is, "\" and the double quote escaped,
// any other byte as \xNN.
std::string escape(std::string_view text);

}  // namespace quiller::differential
