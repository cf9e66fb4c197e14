// First stage of the date/time recogniser: splits a text into its numbers (a month name counts as
// the month's number) and records which separator follows each.
#pragma once

#include <cstdint>
#include <string_view>

namespace quiller::value::detail {

enum DateFieldFlag : std::uint8_t {
    kMonthName = 1,  // written as a month name
    kTimeSep = 2,    // followed by ":" or "."
    kAm = 4,         // followed by AM (or "a")
    kPm = 8,         // followed by PM (or "p")
};
constexpr std::uint8_t kMeridiem = kAm | kPm;

struct DateFields {
    static constexpr int kMax = 6;
    std::uint32_t value[kMax] = {};  // numbers saturate at 2^32 - 1
    std::uint8_t flags[kMax] = {};
    int count = 0;
    std::uint8_t meridiem = 0;  // kAm or kPm when the text holds one (at most one is allowed)
};

// Scans `s` into `out`. False when the text holds something no date can: an unknown word, a
// separator with no number before it or nothing after it, a third "/" or "-", a second AM/PM,
// a seventh number. Day names and blanks and commas between the parts are skipped.
bool scan_date_fields(std::string_view s, DateFields& out);

}  // namespace quiller::value::detail
