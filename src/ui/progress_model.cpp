#include "ui/progress_model.hpp"

#include <algorithm>
#include <cmath>

#include "value/format.hpp"

namespace quiller {
namespace {

std::string two_digits(std::int64_t n) {
    return value::format_number(static_cast<double>(n), "0#");
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

std::string ProgressModel::count_text() const {
    return value::format_number(static_cast<double>(done), "#,##0") + " of " +
           value::format_number(static_cast<double>(total), "#,##0") + " " + unit;
}

std::string ProgressModel::rate_text() const {
    const double r = rate();
    if (!(r > 0)) return {};
    return "(" + value::format_number(r, "#0.0") + " " + unit + "/sec)";
}

std::string ProgressModel::time_text() const {
    return remaining_text(remaining());
}

std::string ProgressModel::time_line() const {
    return count_text() + " " + rate_text() + " " + time_text();
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
