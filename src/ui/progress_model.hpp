// The progress window's state and texts: the item counts, the clock and the unit word, turned
// into the bar's percent and the time line ("12 of 40 files (3.0 files/sec) 09 remaining").
// Hosts only draw what this computes.
#pragma once

#include <cstdint>
#include <string>

namespace quiller {

struct ProgressModel {
    std::string title;       // what is being done ("Copying")
    std::string unit;        // the items' word ("files")
    std::int64_t total = 0;  // items the work will handle
    std::int64_t done = 0;   // items handled so far
    double start = 0;        // seconds on any steady clock, taken when the work starts
    double now = 0;          // seconds on the same clock, taken at the latest update

    // 100 when there is nothing to do; otherwise done of total, rounded, at most 100.
    int percent() const;
    // Items per second; 0 before any time has passed.
    double rate() const;
    // Seconds still needed at the present rate; 0 while the rate is 0.
    double remaining() const;

    std::string count_text() const;  // "1,234 of 5,000 files"
    std::string rate_text() const;   // "(12.5 files/sec)", or empty while the rate is 0
    std::string time_text() const;   // "1:02:05 remaining", or empty
    // The time line: count text, rate text and time text, each pair joined by a blank.
    std::string time_line() const;
};

// The remaining-time text: hours when there are any, minutes and seconds as two digits each
// ("1:02:05 remaining", "03:20 remaining", "45 remaining"); empty for 0.9 s or less.
std::string remaining_text(double seconds);

}  // namespace quiller
