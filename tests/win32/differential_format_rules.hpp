// The formatter's comparison: how Wine's known faults are modelled (differential_format_rules.cpp
// and differential_format_date_rules.cpp).
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "differential.hpp"

namespace quiller::differential {

// One attempt to reproduce Wine's text with Quiller's formatter: a value, a picture, changes to
// the parsed date picture, and what both texts lose before they are compared.
struct Trial {
    double value;
    std::string format;
    bool strip_minus = false;       // the first "-"
    bool strip_commas = false;      // every ","
    bool lower_exponent = false;    // "E" as "e"
    bool twenty_four_hour = false;  // hours of the 24-hour clock despite an AM/PM marker
    bool blank_midnight = false;    // "ttttt" and "Long Time" write nothing at midnight

    std::string normal(std::string s) const;
    bool matches(const std::string& ours, const std::string& system) const;
    std::string quiller(bool as_date) const;
};

// A fault of Wine's: when it can matter for a case, and how Quiller reproduces it.
struct Fault {
    const char* name;
    std::function<bool(const FormatCase&)> applies;
    std::function<void(Trial&)> apply;
};

// The names (joined by "+") of the first combination of up to three faults that makes Quiller
// write `system`; empty when none does. "half" and "below-one" exclude each other.
std::string explain(const FormatCase& c, const std::string& system,
                    const std::vector<Fault>& faults);

// The class of a difference: the faults that explain it, a fault that can't be modelled
// ("no-integer-places", "zero-before-hash", "medium-date"), a date picture whose text Wine
// garbles after an AM/PM marker or a "c" ("after-marker", "after-c"), or "text" when nothing
// explains it.
std::string number_format_class(const FormatCase& c, const std::string& system);
std::string date_format_class(const FormatCase& c, const std::string& system);

// Why the system refused a date picture: "failed-after-marker" (a lower-case "a/p" with more of
// the picture after it), "failed-at-c", or "failed".
std::string failed_date_class(const FormatCase& c);

// The faults of number pictures and of date pictures.
const std::vector<Fault>& number_faults();
const std::vector<Fault>& date_faults();

}  // namespace quiller::differential
