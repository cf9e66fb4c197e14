// What the value tables can't carry: sweeps over many values, round trips, the caches of parsed
// pictures and the default conventions.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <random>
#include <string>

#include "value/format.hpp"
#include "value/value.hpp"

namespace quiller::value {
namespace {

int days_in_month(int y, int m) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
    return m == 2 && leap ? 29 : kDays[m - 1];
}

// Every day from 1 January 100 to 31 December 9999 in turn, both ways.
TEST(ValueDates, RoundTripEveryDayOfYears100To9999) {
    double serial = date_serial(100, 1, 1);
    int weekday = 6;  // 1 January 100 was a Friday
    for (int y = 100; y <= 9999; ++y) {
        for (int m = 1; m <= 12; ++m) {
            for (int d = 1; d <= days_in_month(y, m); ++d, ++serial) {
                ASSERT_EQ(date_serial(y, m, d), serial) << y << "-" << m << "-" << d;
                DateParts p = split_date(serial);
                ASSERT_TRUE(p.year == y && p.month == m && p.day == d && p.weekday == weekday)
                    << serial << " -> " << p.year << "-" << p.month << "-" << p.day;
                weekday = weekday % 7 + 1;
            }
        }
    }
    EXPECT_EQ(serial, 2958466);
}

TEST(ValueGeneralForms, ReadBack) {
    for (double v : {37256.75, 1.0, 0.25, -1.25, -657434.5, 2958465.5, 36892 + 1.0 / 86400}) {
        const std::optional<double> back = parse_date(format_general_date(v), 2026);
        ASSERT_TRUE(back.has_value()) << v;
        EXPECT_NEAR(*back, v, 1e-9) << v;
    }
    for (double v : {1.0 / 3, 2.0 / 7, 1234.5678, -98765.4321, 3e-12, 6.02e23})
        EXPECT_NEAR(*parse_locale_number(format_general_number(v)), v, std::fabs(v) * 1e-14) << v;
}

TEST(ValueNumbers, ManyDigitsRoundCorrectly) {
    EXPECT_EQ(parse_locale_number("0." + std::string(1000, '1')), 0.1111111111111111);
    const std::string half = "9007199254740993" + std::string(900, '0') + "1e-901";
    EXPECT_EQ(parse_locale_number(half), 9007199254740994.0);  // just above the halfway point
}

// The digits behind every picture are the number's 15 significant digits, correctly rounded:
// checked against the standard library's conversion over many magnitudes.
TEST(FormatNumber, FifteenSignificantDigits) {
    std::mt19937_64 gen(20261122);
    std::uniform_real_distribution<double> mantissa(1.0, 10.0);
    std::uniform_int_distribution<int> exponent(-12, 20);
    for (int i = 0; i < 200000; ++i) {
        const double v = mantissa(gen) * std::pow(10.0, exponent(gen));
        char buf[40];
        std::string expected(
            buf, std::to_chars(buf, buf + sizeof buf, v, std::chars_format::scientific, 14).ptr);
        expected[expected.find('e')] = 'E';
        ASSERT_EQ(format_number(v, "0.00000000000000E+00"), expected) << i;
    }
}

// More formats than the cache holds, in turns: each answer stays right.
TEST(FormatCache, ManyFormatsInTurn) {
    for (int round = 0; round < 3; ++round) {
        for (std::size_t k = 0; k < 20; ++k) {
            EXPECT_EQ(format_number(7, std::string(k + 1, '0')), std::string(k, '0') + "7");
            EXPECT_EQ(format_number(7, "0.0#"), "7.0");
        }
    }
}

// Parsed pictures are dropped when the conventions change.
TEST(FormatCache, FollowsEveryChangeOfConventions) {
    const double evening = date_serial(2026, 11, 22) + time_serial(18, 5, 9);
    EXPECT_EQ(format_number(1234.5, "#,##0.00"), "1,234.50");
    EXPECT_EQ(format_date(evening, "Short Date"), "11/22/2026");
    NumberConventions c;
    c.decimal = ",";
    c.thousands = " ";
    c.short_date = "yyyy-mm-dd";
    set_conventions(c);
    EXPECT_EQ(format_number(1234.5, "#,##0.00"), "1 234,50");
    EXPECT_EQ(format_date(evening, "Short Date"), "2026-11-22");
    c.short_date = "ddddd";  // a picture that names itself falls back to en-US's
    set_conventions(c);
    EXPECT_EQ(format_date(evening, "Short Date"), "11/22/2026");
    EXPECT_EQ(format_date(evening, "c"), "11/22/2026 6:05:09 PM");
    set_conventions({});
    EXPECT_EQ(format_number(1234.5, "#,##0.00"), "1,234.50");
    EXPECT_EQ(format_date(evening, "Short Date"), "11/22/2026");
}

// The default conventions are what en-US's locale data gives, so that en-US on Windows keeps
// the fixed fast forms.
TEST(LocalePatterns, DefaultsAreEnUsLocaleData) {
    const NumberConventions en_us;
    EXPECT_EQ(en_us.currency_format, currency_picture("$", 0, 0, 2));
    EXPECT_EQ(en_us.short_date, picture_of_locale_pattern("M/d/yyyy"));
    EXPECT_EQ(en_us.long_time, picture_of_locale_pattern("h:mm:ss tt"));
}

TEST(LocalDayNumber, MatchesTheDayNumberOfTheMoment) {
    const std::int64_t y2k = 946684800;  // 2000-01-01 00:00:00 UTC
    const double day = local_day_number(y2k);
    EXPECT_NEAR(day, date_serial(2000, 1, 1), 15.0 / 24);  // within any time zone's offset
    EXPECT_NEAR(local_day_number(y2k + 3600) - day, 1.0 / 24, 1e-9);
}

}  // namespace
}  // namespace quiller::value
