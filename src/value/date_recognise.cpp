// The date/time recogniser (en-US): decides from the scanned numbers which are the time and
// which the date, and in which order day, month and year are written.
#include <cstdint>
#include <optional>

#include "value/ascii_class.hpp"
#include "value/date_fields.hpp"
#include "value/value.hpp"

namespace quiller::value {
namespace {

using detail::DateFields;

// One accepted arrangement of numbers. `time_mask` has bit i set when number i is followed by
// ":" or "."; AM/PM may only follow the numbers in `meridiem_at` and, when `needs_meridiem` is
// set, must (a bare hour is a time only with AM/PM).
struct Layout {
    std::uint8_t time_mask;
    std::uint8_t count;
    std::int8_t hour, minute, second;  // positions; -1 when not written
    std::uint8_t date_first, date_count;
    std::uint8_t meridiem_at;  // bit set of positions
    bool needs_meridiem;
};

// T: time number, D: date number. Tried in order; the first that fits wins.
constexpr Layout kLayouts[] = {
    {0x00, 1, 0, -1, -1, 0, 0, 0b1, true},      // T (10 PM)
    {0x00, 2, -1, -1, -1, 0, 2, 0, false},      // DD
    {0x00, 3, 0, -1, -1, 1, 2, 0b1, true},      // TDD
    {0x00, 3, 2, -1, -1, 0, 2, 0b100, true},    // DDT
    {0x00, 3, -1, -1, -1, 0, 3, 0, false},      // DDD
    {0x00, 4, 0, -1, -1, 1, 3, 0b1, true},      // TDDD
    {0x00, 4, 3, -1, -1, 0, 3, 0b1000, true},   // DDDT
    {0x01, 2, 0, 1, -1, 0, 0, 0b11, false},     // TT
    {0x01, 4, 0, 1, -1, 2, 2, 0b11, false},     // TTDD
    {0x01, 5, 0, 1, -1, 2, 3, 0b11, false},     // TTDDD
    {0x03, 3, 0, 1, 2, 0, 0, 0b111, false},     // TTT
    {0x03, 5, 0, 1, 2, 3, 2, 0b111, false},     // TTTDD
    {0x03, 6, 0, 1, 2, 3, 3, 0b111, false},     // TTTDDD
    {0x04, 4, 2, 3, -1, 0, 2, 0b1100, false},   // DDTT
    {0x08, 5, 3, 4, -1, 0, 3, 0b11000, false},  // DDDTT
    {0x0C, 5, 2, 3, 4, 0, 2, 0b11100, false},   // DDTTT
    {0x18, 6, 3, 4, 5, 0, 3, 0b111000, false},  // DDDTTT
};

const Layout* find_layout(const DateFields& f) {
    std::uint8_t mask = 0;
    std::uint8_t marked = 0;  // position of the AM/PM, as a bit
    for (int i = 0; i < f.count; ++i) {
        if (f.flags[i] & detail::kTimeSep) mask |= 1 << i;
        if (f.flags[i] & detail::kMeridiem) marked = 1 << i;
    }
    for (const Layout& l : kLayouts) {
        if (l.time_mask != mask || l.count != f.count) continue;
        if (marked ? (marked & l.meridiem_at) : !l.needs_meridiem) return &l;
    }
    return nullptr;
}

// --- Time ----------------------------------------------------------------------------------

std::optional<double> time_of(const DateFields& f, const Layout& l) {
    auto at = [&](int pos) { return pos < 0 ? 0u : f.value[pos]; };
    std::uint32_t hour = at(l.hour), minute = at(l.minute), second = at(l.second);
    if (f.meridiem == detail::kPm && hour < 12) hour += 12;
    if (f.meridiem == detail::kAm && hour == 12) hour = 0;
    if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return time_serial(static_cast<int>(hour), static_cast<int>(minute), static_cast<int>(second));
}

// --- Date ----------------------------------------------------------------------------------

// The orders day, month and year may be written in. MYD only serves month-and-year texts.
enum Order : std::uint8_t { kMDY = 1, kYMD = 2, kYDM = 4, kDMY = 8, kMYD = 16 };

struct OrderSlots {
    Order order;
    std::uint8_t day, month, year;  // positions among the three values
};

// The en-US preference: month first, then year first, then the rest.
constexpr OrderSlots kOrderPreference[] = {
    {kMDY, 1, 0, 2}, {kYMD, 2, 1, 0}, {kMYD, 2, 0, 1}, {kYDM, 1, 2, 0}, {kDMY, 0, 1, 2},
};

struct Ymd {
    std::uint32_t year, month, day;
};

bool is_leap(std::uint32_t y) {
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

// The year as written decides February 29 (so 29 Feb 00 is valid and stays valid as 2000).
bool is_valid_day(std::uint32_t year, std::uint32_t month, std::uint32_t day) {
    static constexpr std::uint8_t kDays[] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (day == 0 || month == 0 || month > 12) return false;
    return day <= kDays[month] || (month == 2 && day == 29 && is_leap(year));
}

std::optional<Ymd> first_valid_order(const std::uint32_t (&v)[3], std::uint8_t orders) {
    for (const OrderSlots& o : kOrderPreference) {
        if (!(orders & o.order)) continue;
        Ymd d{v[o.year], v[o.month], v[o.day]};
        if (is_valid_day(d.year, d.month, d.day)) return d;
    }
    return std::nullopt;
}

// A month name fixes the month's place.
std::uint8_t candidate_orders(const DateFields& f, int first, int count) {
    auto named = [&](int i) { return (f.flags[first + i] & detail::kMonthName) != 0; };
    if (named(0)) return kMDY;
    if (named(1)) return count == 3 ? kDMY | kYMD : kDMY;
    if (count == 3 && named(2)) return kYDM;
    return count == 3 ? kMDY | kDMY | kYMD | kYDM : kMDY | kDMY;
}

// Day, month and year from two or three numbers; two numbers are a day and month of
// `current_year`, or else a month and year (the 1st of that month).
std::optional<Ymd> resolve_date(const DateFields& f, int first, int count, int current_year) {
    const std::uint32_t* v = f.value + first;
    if (count == 0) return Ymd{1899, 12, 30};
    std::uint32_t three[3] = {v[0], v[1], count == 3 ? v[2] : std::uint32_t(current_year)};
    std::optional<Ymd> d = first_valid_order(three, candidate_orders(f, first, count));
    if (d || count == 3) return d;
    three[2] = 1;
    return first_valid_order(three, kYMD | kMYD);
}

// Two-digit years: 00-49 are 2000-2049, 50-99 are 1950-1999.
std::optional<double> day_number(Ymd d) {
    if (d.year < 50) {
        d.year += 2000;
    } else if (d.year < 100) {
        d.year += 1900;
    }
    if (d.year > 9999) return std::nullopt;
    return date_serial(static_cast<int>(d.year), static_cast<int>(d.month),
                       static_cast<int>(d.day));
}

}  // namespace

std::optional<double> parse_date(std::string_view s, int current_year) {
    // A lone number is a date only with AM or PM after it.
    if (detail::plain_whole_number(s)) return std::nullopt;
    DateFields f;
    if (!detail::scan_date_fields(s, f)) return std::nullopt;
    const Layout* layout = find_layout(f);
    if (!layout) return std::nullopt;

    std::optional<double> time = time_of(f, *layout);
    if (!time) return std::nullopt;
    std::optional<Ymd> ymd = resolve_date(f, layout->date_first, layout->date_count, current_year);
    if (!ymd) return std::nullopt;
    std::optional<double> day = day_number(*ymd);
    if (!day) return std::nullopt;
    return *day < 0 ? *day - *time : *day + *time;  // before 1899 the time counts away from 0
}

}  // namespace quiller::value
