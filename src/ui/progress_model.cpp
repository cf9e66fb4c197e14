#include "ui/progress_model.hpp"

#include <algorithm>
#include <cmath>

#include "value/format.hpp"

namespace quiller {
namespace {

std::string two_digits(std::int64_t n) {
    return value::format_number(static_cast<double>(n), "0#");
}

// `frmProgress`'s remaining time: hours when there are any, then minutes and seconds of two
// digits each ("1:02:05", "00:45").
std::string clock_text(double seconds) {
    const auto whole =
        seconds > 0 ? static_cast<std::int64_t>(std::nearbyint(std::min(seconds, 1e15))) : 0;
    std::string text;
    if (whole >= 3600) text += std::to_string(whole / 3600) + ":";
    return text + two_digits(whole % 3600 / 60) + ":" + two_digits(whole % 60);
}

}  // namespace

int ProgressModel::percent() const {
    if (total == 0) return 100;
    const double p = std::nearbyint(static_cast<double>(done) * 100.0 / static_cast<double>(total));
    return p > 100 ? 100 : p < 0 ? 0 : static_cast<int>(p);
}

double ProgressModel::rate() const {
    const double elapsed = now - start;
    return elapsed > 0 ? static_cast<double>(done) / elapsed : 0;
}

double ProgressModel::remaining() const {
    const double r = rate();
    return r > 0 ? static_cast<double>(total - done) / r : 0;
}

std::string ProgressModel::percent_text() const {
    return std::to_string(percent()) + "%";
}

std::string ProgressModel::count_text() const {
    return value::format_number(static_cast<double>(done), "#,##0") + " of " +
           value::format_number(static_cast<double>(total), "#,##0") + " " + unit;
}

std::string ProgressModel::rate_text() const {
    const double r = rate();
    if (!(r > 0)) return {};
    std::string text(1, '(');
    text += value::format_number(r, "#0.0");
    text += ' ';
    text += unit;
    return text + "/sec)";
}

std::string ProgressModel::time_text() const {
    return remaining_text(remaining());
}

std::string ProgressModel::time_line() const {
    if (window == ProgressWindow::Popup)
        return count_text() + " " + rate_text() + " " + time_text();
    return value::format_number(static_cast<double>(done), "#,##0") + " of " +
           value::format_number(static_cast<double>(total), "#,##0") + " (" +
           value::format_number(rate(), "#0.0") + " recs/sec  " + clock_text(remaining()) +
           " to finish)";
}

void ProgressModel::start_timer(double now_seconds) {
    start = now = now_seconds;
    bar_visible = true;
}

CancelEffect ProgressModel::press_cancel() {
    if (window == ProgressWindow::Popup) return CancelEffect::EndProgram;
    cancel_tag = "Cancel";
    return CancelEffect::Marked;
}

TwipsRect popup_place(const ProgressModel& m, const TwipsRect& screen) {
    TwipsRect r = centred(screen, screen.width * 2 / 5, 2000);
    const auto share = [&](int index, int whole, int origin, int& out) {
        const std::optional<double>& v = m.placement[static_cast<std::size_t>(index)];
        if (v && std::isfinite(*v) && *v >= 0 && *v <= 1)
            out = origin + static_cast<int>(std::lround(*v * whole));
    };
    share(2, screen.width, 0, r.width);
    share(3, screen.height, 0, r.height);
    r = centred(screen, std::max(r.width, 1500), std::max(r.height, 1200));
    share(0, screen.width, screen.left, r.left);
    share(1, screen.height, screen.top, r.top);
    return r;
}

TwipsRect progress_place(const TwipsRect& screen) {
    return centred(screen, screen.width / 2, 2400, 300);
}

// Whole seconds are rounded half to even, as the window's integer arithmetic does. The minutes
// show only when more than 60 seconds remain, as the window has always done: 60 s and 59.6 s
// both read "00 remaining" (the rounded seconds wrap to 0 while the minutes stay hidden).
std::string remaining_text(double seconds) {
    if (!(seconds > 0.9)) return {};
    const auto whole = static_cast<std::int64_t>(std::nearbyint(std::min(seconds, 1e15)));
    const std::int64_t hours = whole / 3600;
    const std::int64_t minutes = whole % 3600 / 60;
    std::string text;
    if (hours > 0) text += std::to_string(hours) + ":";
    if (seconds > 60) text += two_digits(minutes) + ":";
    return text + two_digits(whole % 60) + " remaining";
}

}  // namespace quiller
