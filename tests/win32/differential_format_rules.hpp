// The formatter's comparison: how Wine's known faults are modelled (differential_format.cpp for
// number pictures, differential_format_date_rules.cpp for date pictures).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "differential.hpp"

namespace quiller::differential {

// What a fault changes besides the value and the picture: what both texts lose before they are
// compared, or how the parsed date picture is rendered.
enum Change : unsigned {
    kStripMinus = 1,      // the first "-"
    kStripCommas = 2,     // every ","
    kLowerExponent = 4,   // "E" as "e"
    kTwentyFourHour = 8,  // hours of the 24-hour clock despite an AM/PM marker
    kBlankMidnight = 16,  // "ttttt" and "Long Time" write nothing at midnight
};

// A fault of Wine's as Quiller reproduces it: the cases it can matter for (without `applies`,
// those whose picture `rewrite` changes), a rewritten picture, a scaled value, other changes.
struct Fault {
    const char* name;
    bool (*applies)(const FormatCase&) = nullptr;
    std::string (*rewrite)(std::string_view format, double value) = nullptr;
    double scale = 1;
    unsigned changes = 0;
};

// One attempt to reproduce Wine's text with Quiller's formatter.
struct Trial {
    double value;
    std::string format;
    unsigned changes = 0;

    std::string normal(std::string s) const;
    bool matches(const std::string& ours, const std::string& system) const;
    std::string quiller(bool as_date) const;
};

// The names (joined by "+") of the first combination of up to three faults that makes Quiller
// write `system`; empty when none does. "half" and "below-one" exclude each other.
std::string explain(const FormatCase& c, const std::string& system,
                    const std::vector<Fault>& faults);

// The class of a date picture's difference: the faults that explain it, "medium-date" (not
// modelled), a text Wine garbles after an AM/PM marker or a "c" ("after-marker", "after-c"),
// or "text" when nothing explains it.
std::string date_format_class(const FormatCase& c, const std::string& system);

// Why the system refused a date picture: "failed-after-marker" (a lower-case "a/p" with more of
// the picture after it), "failed-at-c", or "failed".
std::string failed_date_class(const FormatCase& c);

}  // namespace quiller::differential
