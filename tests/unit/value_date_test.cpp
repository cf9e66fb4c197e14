// Hand-written cases for the date side of the value layer: day numbers and their parts, the
// recogniser's forms beyond the reference table, and the "General Date" form.
#include <gtest/gtest.h>

#include <optional>

#include "value/value.hpp"

namespace quiller::value {
namespace {

constexpr int kYear = 2026;

double date_of(const char* s, int current_year = kYear) {
    std::optional<double> d = parse_date(s, current_year);
    EXPECT_TRUE(d.has_value()) << s;
    return d.value_or(-1e9);
}

bool is_leap(int y) {
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

int days_in_month(int y, int m) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return m == 2 && is_leap(y) ? 29 : kDays[m - 1];
}

TEST(ValueDateSerial, KnownDays) {
    EXPECT_EQ(date_serial(1899, 12, 30), 0);
    EXPECT_EQ(date_serial(1900, 1, 1), 2);
    EXPECT_EQ(date_serial(2001, 1, 1), 36892);
    EXPECT_EQ(date_serial(1801, 1, 1), -36157);
    EXPECT_EQ(date_serial(100, 1, 1), -657434);
    EXPECT_EQ(date_serial(9999, 12, 31), 2958465);
    EXPECT_EQ(time_serial(12, 0, 0), 0.5);
    EXPECT_EQ(time_serial(18, 0, 0), 0.75);
}

TEST(ValueDateSerial, MonthsAndDaysRollOver) {
    EXPECT_EQ(date_serial(2001, 13, 1), date_serial(2002, 1, 1));
    EXPECT_EQ(date_serial(2001, 0, 1), date_serial(2000, 12, 1));
    EXPECT_EQ(date_serial(2001, -12, 1), date_serial(1999, 12, 1));
    EXPECT_EQ(date_serial(2001, 3, 0), date_serial(2001, 2, 28));
    EXPECT_EQ(date_serial(2000, 2, 30), date_serial(2000, 3, 1));
}

// Every day from 1 January 100 to 31 December 9999 in turn, both ways.
TEST(ValueDateSerial, RoundTripEveryDayOfYears100To9999) {
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

// Before 30 December 1899 the fraction counts forward from midnight although the number is
// negative: the day is the integer part, the time the fraction's size.
TEST(ValueDateSerial, NegativeDayNumbersKeepTheTimeAwayFromZero) {
    DateParts p = split_date(-1.25);
    EXPECT_EQ(p.year, 1899);
    EXPECT_EQ(p.month, 12);
    EXPECT_EQ(p.day, 29);
    EXPECT_EQ(p.hour, 6);
    EXPECT_EQ(p.weekday, 6);  // Friday

    p = split_date(-0.5);
    EXPECT_EQ(p.day, 30);
    EXPECT_EQ(p.hour, 12);

    for (int y : {100, 1066, 1752, 1800, 1899}) {
        double day = date_serial(y, 7, 14);
        double t = time_serial(15, 45, 30);
        p = split_date(day - t);
        EXPECT_TRUE(p.year == y && p.month == 7 && p.day == 14) << y;
        EXPECT_TRUE(p.hour == 15 && p.minute == 45 && p.second == 30) << y;
        EXPECT_EQ(*parse_date(std::to_string(y) + "-7-14 15:45:30", kYear), day - t);
    }
}

TEST(ValueDateSerial, TimeRoundsToTheSecondAndCarries) {
    DateParts p = split_date(36892 + time_serial(10, 30, 15) + 0.4 / 86400);
    EXPECT_TRUE(p.hour == 10 && p.minute == 30 && p.second == 15);
    p = split_date(36892.999999999);
    EXPECT_TRUE(p.year == 2001 && p.month == 1 && p.day == 2 && p.hour == 0 && p.second == 0);
    p = split_date(-1.999999999);  // 29 December, a moment before midnight
    EXPECT_TRUE(p.month == 12 && p.day == 30 && p.hour == 0);
}

TEST(ValueDateRecognise, ExamplesOfTheLanguage) {
    EXPECT_EQ(date_of("12/25/2001") - date_of("12/1/2001"), 24);
    EXPECT_NEAR(date_of("1.5"), time_serial(1, 5, 0), 1e-12);  // read as 1:05
    EXPECT_EQ(date_of("1/1/1801"), -36157);
    EXPECT_EQ(date_of("1/1/65"), date_serial(1965, 1, 1));
    EXPECT_GT(date_of("12/31/2001"), date_of("1/1/2001"));
}

TEST(ValueDateRecognise, FormsOutsideTheTable) {
    EXPECT_EQ(date_of("12/25 10:30"), date_serial(kYear, 12, 25) + time_serial(10, 30, 0));
    EXPECT_EQ(date_of("10:30 PM 12/25"), date_serial(kYear, 12, 25) + time_serial(22, 30, 0));
    EXPECT_EQ(date_of("12/25 10 PM"), date_serial(kYear, 12, 25) + time_serial(22, 0, 0));
    EXPECT_EQ(date_of("Wednesday, December 26, 2001 6:05:09 am"),
              date_serial(2001, 12, 26) + time_serial(6, 5, 9));
    EXPECT_EQ(date_of("1Jan2001"), 36892);
    EXPECT_EQ(date_of("10 p"), time_serial(22, 0, 0));
    EXPECT_EQ(date_of("2/29", 2028), date_serial(2028, 2, 29));
    EXPECT_EQ(date_of("2/29", 2026), date_serial(2029, 2, 1));  // no such day: month 2 of '29
    EXPECT_EQ(date_of("12/30/1899 6:00"), 0.25);
}

TEST(ValueDateRecognise, RejectsNonDates) {
    for (const char* s : {"", "5", "abc", "1/1/2001,", "1/1/2001 ,", "1 2 3 4 5 6 7", "10 a p",
                          "1/2 PM", "10 PM 5", "1:2:3:4", "1/1/12000", "4294967296/1/1",
                          "12/25 10:30:15.5", "Maybe", "1 Mayo", "1/2/3 4:5:"}) {
        EXPECT_FALSE(parse_date(s, kYear).has_value()) << "[" << s << "]";
    }
}

TEST(ValueDateGeneralForm, Forms) {
    EXPECT_EQ(format_general_date(37256.75), "12/31/2001 6:00:00 PM");
    EXPECT_EQ(format_general_date(37256), "12/31/2001");
    EXPECT_EQ(format_general_date(0.5), "12:00:00 PM");
    EXPECT_EQ(format_general_date(0), "12:00:00 AM");
    EXPECT_EQ(format_general_date(-1.25), "12/29/1899 6:00:00 AM");
    EXPECT_EQ(format_general_date(-0.5), "12:00:00 PM");
    EXPECT_EQ(format_general_date(-657434 - time_serial(23, 59, 59)), "1/1/100 11:59:59 PM");
    EXPECT_EQ(format_general_date(36892.999999999), "1/2/2001");
    EXPECT_EQ(format_general_date(date_serial(2001, 7, 4) + time_serial(12, 5, 9)),
              "7/4/2001 12:05:09 PM");
}

TEST(ValueDateGeneralForm, ReadsBack) {
    for (double v : {37256.75, 1.0, 0.25, -1.25, -657434.5, 2958465.5, 36892 + 1.0 / 86400}) {
        std::string text = format_general_date(v);
        std::optional<double> back = parse_date(text, kYear);
        ASSERT_TRUE(back.has_value()) << text;
        EXPECT_NEAR(*back, v, 1e-9) << text;
    }
}

}  // namespace
}  // namespace quiller::value
