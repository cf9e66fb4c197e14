// The progress windows' state and texts: the item counts, the clock and the unit word, turned
// into the bar's percent and the time line ("12 of 40 files (3.0 files/sec) 09 remaining"), the
// label texts, and what Cancel does. Hosts only draw what this computes.
//
// Two windows share it: `frmPopup`, the small window of the `popup` statement and the directory
// synchronisation, whose Cancel ends the program; and `frmProgress` ("Progress Indicator"), whose
// Cancel only marks the window (the tag "Cancel") for the work to notice.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "ui/window_placement.hpp"

namespace quiller {

enum class ProgressWindow { Popup, Progress };
enum class CancelEffect { EndProgram, Marked };

struct ProgressModel {
    ProgressWindow window = ProgressWindow::Progress;
    std::string title;          // `lblTitle`: what is being done ("Copying")
    std::string info;           // `txtInfo`
    std::string progress_text;  // `txtProgress`
    bool cancel_visible = true;
    bool bar_visible = false;  // `CopyBar`, shown by the start of the clock
    std::string cancel_tag;    // "Cancel" once Cancel was pressed in `frmProgress`
    // The `popup` statement's placement: left, top, width, height as shares of the screen's
    // width and height (0.25 = a quarter); the window's default where one is missing.
    std::array<std::optional<double>, 4> placement;
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

    std::string percent_text() const;  // "42%", written centred in the bar
    std::string count_text() const;    // "1,234 of 5,000 files"
    std::string rate_text() const;     // "(12.5 files/sec)", or empty while the rate is 0
    std::string time_text() const;     // "1:02:05 remaining", or empty
    // `lblTime`. `frmPopup`: count text, rate text and time text, each pair joined by a blank;
    // `frmProgress`: "1,234 of 5,000 (0.3 recs/sec  3:23:27 to finish)".
    std::string time_line() const;

    // `StartTimer`: the clock starts at `now_seconds` and the bar shows.
    void start_timer(double now_seconds);
    // Cancel pressed: `frmPopup` ends the program; `frmProgress` sets its tag.
    CancelEffect press_cancel();
    bool cancelled() const { return cancel_tag == "Cancel"; }
};

// `frmPopup`'s place on a screen: the `popup` statement's shares where given, else 40 % of the
// screen's width by 2,000 twips, centred.
TwipsRect popup_place(const ProgressModel& m, const TwipsRect& screen);
// `frmProgress`'s default: half the screen's width by 2,400 twips, 300 twips above the centre.
TwipsRect progress_place(const TwipsRect& screen);

// The remaining-time text: hours when there are any, minutes and seconds as two digits each
// ("1:02:05 remaining", "03:20 remaining", "45 remaining"); empty for 0.9 s or less.
std::string remaining_text(double seconds);

}  // namespace quiller
