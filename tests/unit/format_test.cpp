// The formatter: every row of the formatting tables in tests/reference (the platform's own
// answers, en-US), then cases of our own. Rows where the project knowingly writes something else
// are listed with the project's answer and the reason.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "value/format.hpp"
#include "value/value.hpp"
#include "reference_table.hpp"

namespace quiller::value {
namespace {

using test::load_reference;
using test::ReferenceRow;
using test::to_double;

// A row the project deliberately writes differently; `ours` is the project's answer.
struct Deviation {
    int line;
    std::string_view value;
    std::string_view format;
    std::string_view ours;
    std::string_view reason;
};

const Deviation* find_deviation(const std::vector<Deviation>& list, const ReferenceRow& row) {
    for (const Deviation& d : list)
        if (d.line == row.line && d.value == row.cells[0] && d.format == row.cells[1]) return &d;
    return nullptr;
}

// Checks every row of `file` with `format`; returns the number of rows checked.
template <typename Format>
int check_table(const char* file, const std::vector<Deviation>& deviations, Format format) {
    auto rows = load_reference(file);
    int used = 0;
    for (const ReferenceRow& row : rows) {
        EXPECT_EQ(row.cells.size(), 3u) << file << " line " << row.line;
        if (row.cells.size() != 3) continue;
        const std::string got = format(to_double(row.cells[0]), row.cells[1]);
        if (const Deviation* d = find_deviation(deviations, row)) {
            ++used;
            EXPECT_EQ(got, d->ours) << file << " line " << row.line << ": " << d->reason;
            EXPECT_NE(got, row.cells[2])
                << file << " line " << row.line << " now agrees with the table; drop its entry";
            continue;
        }
        EXPECT_EQ(got, row.cells[2]) << file << " line " << row.line << ": " << row.cells[0]
                                     << " with [" << row.cells[1] << "]";
    }
    EXPECT_EQ(used, static_cast<int>(deviations.size())) << "a deviation matches no row";
    return static_cast<int>(rows.size());
}

// Why the project's answer differs from a row. The table was made by an independent
// implementation of the platform's formatting, which has known faults against the platform.
constexpr std::string_view kHalfAway =
    "the platform rounds half away from zero (0.5 gives 1, as 1.5 gives 2 and 2.5 gives 3 in the "
    "same table); the table's implementation rounds 0.5 down";
constexpr std::string_view kSignFirst =
    "a negative value with a single section gets its minus sign in front of the whole text, "
    "literal text included: the platform writes -$1,234.50, not $-1,234.50";
constexpr std::string_view kGeneralText =
    "\"@\" writes the general text of the number, as the empty format does (1E+15, 1E-05); the "
    "table shows the C library's lower-case exponent";
constexpr std::string_view kZeroPlaces =
    "\"0#\" shows at least two digits: the table itself gives 00 for 0.125, 1E-05 and 0.004, "
    "which round to nothing as well, so its single 0 for an exact zero is inconsistent";
constexpr std::string_view kLostDigit =
    "99.995 rounds to 100 (\"0\", \"00\" and \"#\" give 100 in the same table); the table drops "
    "the last digit";

const std::vector<Deviation> kNumberDeviations = {
    {3, "0", "0#", "00", kZeroPlaces},
    {85, "-1", "$#,##0.00", "-$1.00", kSignFirst},
    {86, "-1", "\"x\"0", "-x1", kSignFirst},
    {104, "0.5", "0", "1", kHalfAway},
    {105, "0.5", "0#", "01", kHalfAway},
    {106, "0.5", "#", "1", kHalfAway},
    {107, "0.5", "00", "01", kHalfAway},
    {111, "0.5", "#,##0", "1", kHalfAway},
    {118, "0.5", "0;-0;zero", "1", kHalfAway},
    {120, "0.5", "\"x\"0", "x1", kHalfAway},
    {121, "0.5", "0\\%", "1%", kHalfAway},
    {135, "0.5", "#,##0 \"files\"", "1 files", kHalfAway},
    {221, "-2.5", "$#,##0.00", "-$2.50", kSignFirst},
    {222, "-2.5", "\"x\"0", "-x3", kSignFirst},
    {357, "-1234.5", "$#,##0.00", "-$1,234.50", kSignFirst},
    {358, "-1234.5", "\"x\"0", "-x1235", kSignFirst},
    {477, "1e15", "@", "1E+15", kGeneralText},
    {511, "1e-5", "@", "1E-05", kGeneralText},
    {556, "0.005", "0%", "1%", kHalfAway},
    {615, "99.995", "0#", "100", kLostDigit},
};

constexpr std::string_view kMediumDate =
    "\"Medium Date\" is dd-mmm-yy on the platform (31-Dec-01); the table writes the long date";
constexpr std::string_view kMinutes =
    "\"mm\" right before seconds means minutes on the platform, as it does right after an hour; "
    "the table writes the month";
constexpr std::string_view kTwelveHour =
    "an AM/PM marker puts the hours on the 12-hour clock (6:00 PM, 12:00 AM), as the table's own "
    "\"h:mm am/pm\" rows show; the table keeps upper-case AM/PM on the 24-hour clock";
constexpr std::string_view kMidnight =
    "midnight is 12:00:00 AM, which the table itself writes for day 0; its empty text for the "
    "midnight of other days is a fault";
constexpr std::string_view kWeek =
    "weeks run Sunday to Saturday, so Saturday 30 December 1899 is in the week of Friday "
    "29 December, which the table numbers 52";

const std::vector<Deviation> kDateDeviations = {
    {4, "37256.5", "Medium Date", "31-Dec-01", kMediumDate},
    {43, "37256.5", "mm:ss", "00:00", kMinutes},
    {52, "37256.75", "Medium Date", "31-Dec-01", kMediumDate},
    {77, "37256.75", "h:mm AM/PM", "6:00 PM", kTwelveHour},
    {91, "37256.75", "mm:ss", "00:00", kMinutes},
    {100, "0.75", "Medium Date", "30-Dec-99", kMediumDate},
    {125, "0.75", "h:mm AM/PM", "6:00 PM", kTwelveHour},
    {131, "0.75", "ww", "52", kWeek},
    {139, "0.75", "mm:ss", "00:00", kMinutes},
    {148, "36892", "Medium Date", "01-Jan-01", kMediumDate},
    {150, "36892", "Long Time", "12:00:00 AM", kMidnight},
    {173, "36892", "h:mm AM/PM", "12:00 AM", kTwelveHour},
    {177, "36892", "ttttt", "12:00:00 AM", kMidnight},
    {187, "36892", "mm:ss", "00:00", kMinutes},
    {196, "1", "Medium Date", "31-Dec-99", kMediumDate},
    {198, "1", "Long Time", "12:00:00 AM", kMidnight},
    {221, "1", "h:mm AM/PM", "12:00 AM", kTwelveHour},
    {225, "1", "ttttt", "12:00:00 AM", kMidnight},
    {235, "1", "mm:ss", "00:00", kMinutes},
    {244, "-1", "Medium Date", "29-Dec-99", kMediumDate},
    {246, "-1", "Long Time", "12:00:00 AM", kMidnight},
    {269, "-1", "h:mm AM/PM", "12:00 AM", kTwelveHour},
    {273, "-1", "ttttt", "12:00:00 AM", kMidnight},
    {283, "-1", "mm:ss", "00:00", kMinutes},
    {292, "2.5", "Medium Date", "01-Jan-00", kMediumDate},
    {331, "2.5", "mm:ss", "00:00", kMinutes},
    {340, "43831.999988", "Medium Date", "01-Jan-20", kMediumDate},
    {365, "43831.999988", "h:mm AM/PM", "11:59 PM", kTwelveHour},
    {379, "43831.999988", "mm:ss", "59:59", kMinutes},
    {388, "0", "Medium Date", "30-Dec-99", kMediumDate},
    {413, "0", "h:mm AM/PM", "12:00 AM", kTwelveHour},
    {419, "0", "ww", "52", kWeek},
    {427, "0", "mm:ss", "00:00", kMinutes},
    {436, "37256.0416666667", "Medium Date", "31-Dec-01", kMediumDate},
    {475, "37256.0416666667", "mm:ss", "00:00", kMinutes},
    {484, "37256.5208333333", "Medium Date", "31-Dec-01", kMediumDate},
    {523, "37256.5208333333", "mm:ss", "30:00", kMinutes},
    {532, "-657434", "Medium Date", "01-Jan-00", kMediumDate},
    {534, "-657434", "Long Time", "12:00:00 AM", kMidnight},
    {557, "-657434", "h:mm AM/PM", "12:00 AM", kTwelveHour},
    {561, "-657434", "ttttt", "12:00:00 AM", kMidnight},
    {571, "-657434", "mm:ss", "00:00", kMinutes},
    {580, "2958465.99999", "Medium Date", "31-Dec-99", kMediumDate},
    {605, "2958465.99999", "h:mm AM/PM", "11:59 PM", kTwelveHour},
    {619, "2958465.99999", "mm:ss", "59:59", kMinutes},
};

TEST(FormatReference, NumberFormatsTable) {
    EXPECT_GT(check_table("number-formats.tsv", kNumberDeviations, format_number), 600);
}

TEST(FormatReference, DateFormatsTable) {
    EXPECT_GT(check_table("date-formats.tsv", kDateDeviations, format_date), 600);
}

// --- Cases of our own -----------------------------------------------------------------------

const double kNov22 = date_serial(2026, 11, 22);         // a Sunday
const double kEvening = kNov22 + time_serial(18, 5, 9);  // 6:05:09 PM

TEST(FormatNumber, CountsAndRates) {
    EXPECT_EQ(format_number(0, "#,##0"), "0");
    EXPECT_EQ(format_number(1536, "#,##0"), "1,536");
    EXPECT_EQ(format_number(1234567, "#,##0"), "1,234,567");
    EXPECT_EQ(format_number(-1234567.4, "#,##0"), "-1,234,567");
    EXPECT_EQ(format_number(100, "#,##0"), "100");
    EXPECT_EQ(format_number(5, "0#"), "05");
    EXPECT_EQ(format_number(0, "0#"), "00");
    EXPECT_EQ(format_number(59.4, "0#"), "59");
    EXPECT_EQ(format_number(123, "0#"), "123");
    EXPECT_EQ(format_number(12.345, "#0.0"), "12.3");
    EXPECT_EQ(format_number(0, "#0.0"), "0.0");
    EXPECT_EQ(format_number(0.06, "#0.0"), "0.1");
    EXPECT_EQ(format_number(5, "00# "), "005 ");
    EXPECT_EQ(format_number(1234, "00# "), "1234 ");
}

TEST(FormatNumber, OptionalFractionDigits) {
    EXPECT_EQ(format_number(1536, "0.0#"), "1536.0");
    EXPECT_EQ(format_number(1.5, "0.0#"), "1.5");
    EXPECT_EQ(format_number(1.25, "0.0#"), "1.25");
    EXPECT_EQ(format_number(1.0 / 1024, "0.0#"), "0.0");
    EXPECT_EQ(format_number(1536.0 / 1024 / 1024, "0.0#"), "0.0");
    EXPECT_EQ(format_number(3.999, "0.0#"), "4.0");
    EXPECT_EQ(format_number(1, "#.##"), "1.");
    EXPECT_EQ(format_number(0.5, ".00"), ".50");
    EXPECT_EQ(format_number(5.5, ".00"), "5.50");
}

// Rounding works on the number as written with 15 digits, half away from zero.
TEST(FormatNumber, DecimalRounding) {
    EXPECT_EQ(format_number(2.675, "0.00"), "2.68");
    EXPECT_EQ(format_number(1.005, "0.00"), "1.01");
    EXPECT_EQ(format_number(1.255, "0.0#"), "1.26");
    EXPECT_EQ(format_number(0.285, "0.00"), "0.29");
    EXPECT_EQ(format_number(-2.5, "0"), "-3");
    EXPECT_EQ(format_number(0.5, "0"), "1");
    EXPECT_EQ(format_number(9.995, "0.00"), "10.00");
    EXPECT_EQ(format_number(999999.5, "#,##0"), "1,000,000");
    EXPECT_EQ(format_number(0.1 + 0.2, "0.0000000000000000"), "0.3000000000000000");
    EXPECT_EQ(format_number(-0.004, "0.00"), "-0.00");  // the sign follows the value
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

TEST(FormatNumber, LargeAndSmall) {
    EXPECT_EQ(format_number(1e20, "#,##0"), "100,000,000,000,000,000,000");
    EXPECT_EQ(format_number(123456789012345678.0, "0"), "123456789012346000");
    EXPECT_EQ(format_number(1e-300, "0.00"), "0.00");
    EXPECT_EQ(format_number(1e-300, "0.00E+00"), "1.00E-300");
    EXPECT_EQ(format_number(1.7976931348623157e308, "0.0E+0"), "1.8E+308");
    EXPECT_EQ(format_number(std::nan(""), "0.00"), "NaN");
}

TEST(FormatNumber, Sections) {
    EXPECT_EQ(format_number(5, "0;(0);\"nil\""), "5");
    EXPECT_EQ(format_number(-5, "0;(0);\"nil\""), "(5)");
    EXPECT_EQ(format_number(0, "0;(0);\"nil\""), "nil");
    EXPECT_EQ(format_number(-0.0, "0;(0);\"nil\""), "nil");
    EXPECT_EQ(format_number(0.001, "0;(0);\"nil\""), "0");  // only an exact zero is zero
    EXPECT_EQ(format_number(-5, "0;;z"), "-5");             // an empty section: the first one
    EXPECT_EQ(format_number(0, "0;;z"), "z");
    EXPECT_EQ(format_number(0, "0;-0;;"), "0");
    EXPECT_EQ(format_number(0, "0;-0;zero;null"), "zero");  // the fourth section is never used
    EXPECT_EQ(format_number(-5, "0;"), "-5");
}

TEST(FormatNumber, ScalingPercentExponent) {
    EXPECT_EQ(format_number(1234567, "#,##0,"), "1,235");
    EXPECT_EQ(format_number(1234567, "0.0,,"), "1.2");
    EXPECT_EQ(format_number(1234567, "0,.00"), "1234.57");
    EXPECT_EQ(format_number(0.015, "0.0%"), "1.5%");
    EXPECT_EQ(format_number(12345, "0.00E+00"), "1.23E+04");
    EXPECT_EQ(format_number(0.00012, "0.0e-00"), "1.2e-04");
    EXPECT_EQ(format_number(12345, "0.0e-0"), "1.2e4");
    EXPECT_EQ(format_number(99999, "0.0E+0"), "1.0E+5");
}

TEST(FormatNumber, LiteralText) {
    EXPECT_EQ(format_number(5, "\"x\"0\"y\""), "x5y");
    EXPECT_EQ(format_number(5, "0\\%"), "5%");
    EXPECT_EQ(format_number(5, "0 \"abc"), "5 abc");  // a quote left open: the rest is text
    EXPECT_EQ(format_number(5, "\"abc"), "abc");
    EXPECT_EQ(format_number(5, "0\\"), "5");  // a backslash at the end escapes nothing
    EXPECT_EQ(format_number(1536, "0.0 \"files/sec\""), "1536.0 files/sec");
    EXPECT_EQ(format_number(7, "0 files"), "7 files");  // letters in a number picture are text
    EXPECT_EQ(format_number(7, "(0)"), "(7)");
    EXPECT_EQ(format_number(-7, "(0)"), "-(7)");
    EXPECT_EQ(format_number(1234, "00-00"), "12-34");
    EXPECT_EQ(format_number(5, "$#,##0.00"), "$5.00");
}

TEST(FormatNumber, NamedFormats) {
    EXPECT_EQ(format_number(1234.5, "General Number"), "1234.5");
    EXPECT_EQ(format_number(1234.5, "Currency"), "$1,234.50");
    EXPECT_EQ(format_number(-1234.5, "currency"), "($1,234.50)");
    EXPECT_EQ(format_number(1234.5, "FIXED"), "1234.50");
    EXPECT_EQ(format_number(1234.5, "Standard"), "1,234.50");
    EXPECT_EQ(format_number(0.125, "percent"), "12.50%");
    EXPECT_EQ(format_number(1234.5, "Scientific"), "1.23E+03");
    EXPECT_EQ(format_number(0, "yes/no"), "No");
    EXPECT_EQ(format_number(2, "TRUE/FALSE"), "True");
    EXPECT_EQ(format_number(0, "On/Off"), "Off");
    EXPECT_EQ(format_number(1234.5, ""), "1234.5");
    EXPECT_EQ(format_number(1234.5, "@"), "1234.5");
    EXPECT_EQ(format_number(kNov22, "Short Date"), "11/22/2026");  // a date format reads a day
}

TEST(FormatDate, NamedFormats) {
    EXPECT_EQ(format_date(kEvening, "Long Date"), "Sunday, November 22, 2026");
    EXPECT_EQ(format_date(kEvening, "long date"), "Sunday, November 22, 2026");
    EXPECT_EQ(format_date(kEvening, "Medium Date"), "22-Nov-26");
    EXPECT_EQ(format_date(kEvening, "SHORT DATE"), "11/22/2026");
    EXPECT_EQ(format_date(kEvening, "Long Time"), "6:05:09 PM");
    EXPECT_EQ(format_date(kEvening, "Medium Time"), "06:05 PM");
    EXPECT_EQ(format_date(kEvening, "Short Time"), "18:05");
    EXPECT_EQ(format_date(kEvening, "General Date"), "11/22/2026 6:05:09 PM");
    EXPECT_EQ(format_date(kEvening, ""), "11/22/2026 6:05:09 PM");
    EXPECT_EQ(format_date(kNov22, "Long Time"), "12:00:00 AM");
    EXPECT_EQ(format_date(kEvening, "Yes/No"), "Yes");
    EXPECT_EQ(format_date(kEvening, "Fixed"), "46348.75");  // a number format writes the day number
}

TEST(FormatDate, Pictures) {
    EXPECT_EQ(format_date(kEvening, "yyyy-mm-dd"), "2026-11-22");
    EXPECT_EQ(format_date(kEvening, "  (mmm d hh:mm:ss)"), "  (Nov 22 18:05:09)");
    EXPECT_EQ(format_date(kEvening, "dd.mm.yy"), "22.11.26");
    EXPECT_EQ(format_date(kEvening, "YYYY-MM-DD HH:NN"), "2026-11-22 18:05");
    EXPECT_EQ(format_date(kEvening, "ddd dddd mmm mmmm"), "Sun Sunday Nov November");
    EXPECT_EQ(format_date(kEvening, "ddddd"), "11/22/2026");
    EXPECT_EQ(format_date(kEvening, "dddddd"), "Sunday, November 22, 2026");
    EXPECT_EQ(format_date(kEvening, "ttttt"), "6:05:09 PM");
    EXPECT_EQ(format_date(kEvening, "c"), "11/22/2026 6:05:09 PM");
    EXPECT_EQ(format_date(kEvening, "w ww q y"), "1 48 4 326");
    EXPECT_EQ(format_date(kEvening, "\"Date:\" d \\d"), "Date: 22 d");
    EXPECT_EQ(format_date(kEvening, "yyyy \"open"), "2026 open");
}

TEST(FormatDate, MinutesOrMonths) {
    EXPECT_EQ(format_date(kEvening, "h:m"), "18:5");
    EXPECT_EQ(format_date(kEvening, "hh:mm:ss"), "18:05:09");
    EXPECT_EQ(format_date(kEvening, "mm:ss"), "05:09");
    EXPECT_EQ(format_date(kEvening, "mm/dd/yyyy hh:mm"), "11/22/2026 18:05");
    EXPECT_EQ(format_date(kEvening, "m"), "11");
    EXPECT_EQ(format_date(kEvening, "n nn"), "5 05");
    EXPECT_EQ(format_date(kEvening, "s ss"), "9 09");
}

TEST(FormatDate, TwelveHourClock) {
    EXPECT_EQ(format_date(kEvening, "h:nn AM/PM"), "6:05 PM");
    EXPECT_EQ(format_date(kEvening, "hh:nn am/pm"), "06:05 pm");
    EXPECT_EQ(format_date(kEvening, "h:nn Am/pM"), "6:05 pM");
    EXPECT_EQ(format_date(kEvening, "h a/p"), "6 p");
    EXPECT_EQ(format_date(kEvening, "h A/P"), "6 P");
    EXPECT_EQ(format_date(kEvening, "h AMPM"), "6 PM");
    EXPECT_EQ(format_date(kNov22, "h:nn AM/PM"), "12:00 AM");
    EXPECT_EQ(format_date(kNov22 + 0.5, "h:nn AM/PM"), "12:00 PM");
    EXPECT_EQ(format_date(kEvening, "h a"), "18 a");  // a lone "a" is text
}

// More formats than the cache holds, in turns: each answer stays right.
TEST(FormatCache, ManyFormatsInTurn) {
    for (int round = 0; round < 3; ++round) {
        for (int k = 0; k < 20; ++k) {
            std::string zeros(static_cast<std::size_t>(k + 1), '0');
            std::string expected(static_cast<std::size_t>(k), '0');
            expected += '7';
            EXPECT_EQ(format_number(7, zeros), expected);
            EXPECT_EQ(format_number(7, "0.0#"), "7.0");
        }
    }
}

TEST(LocalDayNumber, MatchesTheDayNumberOfTheMoment) {
    const std::int64_t y2k = 946684800;  // 2000-01-01 00:00:00 UTC
    const double day = local_day_number(y2k);
    EXPECT_NEAR(day, date_serial(2000, 1, 1), 15.0 / 24);  // within any time zone's offset
    EXPECT_NEAR(local_day_number(y2k + 3600) - day, 1.0 / 24, 1e-9);
}

// --- Regional conventions -------------------------------------------------------------------

// Pictures made from the platform's locale data.
TEST(LocalePatterns, DateAndTimePatternsBecomePictures) {
    EXPECT_EQ(picture_of_locale_pattern("M/d/yyyy"), "m/d/yyyy");
    EXPECT_EQ(picture_of_locale_pattern("dd.MM.yyyy"), "dd.mm.yyyy");
    EXPECT_EQ(picture_of_locale_pattern("yyyy-MM-dd"), "yyyy-mm-dd");
    EXPECT_EQ(picture_of_locale_pattern("d/M/yy"), "d/m/yy");
    EXPECT_EQ(picture_of_locale_pattern("dddd, MMMM d, yyyy"), "dddd, mmmm d, yyyy");
    EXPECT_EQ(picture_of_locale_pattern("h:mm:ss tt"), "h:nn:ss AMPM");
    EXPECT_EQ(picture_of_locale_pattern("HH:mm:ss"), "hh:nn:ss");
    EXPECT_EQ(picture_of_locale_pattern("H.mm"), "h.nn");
    EXPECT_EQ(picture_of_locale_pattern("gg yyyy'y' M'm'"), " yyyy\"y\" m\"m\"");
    EXPECT_EQ(picture_of_locale_pattern("d 'de' MMMM"), "d \"de\" mmmm");
    EXPECT_EQ(picture_of_locale_pattern("h 'o''clock'"), "h \"o'clock\"");
    EXPECT_EQ(picture_of_locale_pattern("h''mm"), "h\\'nn");
    EXPECT_EQ(format_date(kEvening, picture_of_locale_pattern("yyyy'y' M'm'")), "2026y 11m");
}

// The default conventions are what en-US's locale data gives, so that en-US on Windows keeps
// the fixed fast forms.
TEST(LocalePatterns, DefaultsAreEnUsLocaleData) {
    const NumberConventions en_us;
    EXPECT_EQ(en_us.currency_format, currency_picture("$", 0, 0, 2));
    EXPECT_EQ(en_us.short_date, picture_of_locale_pattern("M/d/yyyy"));
    EXPECT_EQ(en_us.long_time, picture_of_locale_pattern("h:mm:ss tt"));
}

TEST(LocalePatterns, CurrencyPictures) {
    const std::string en_us = currency_picture("$", 0, 0, 2);
    EXPECT_EQ(format_number(1234.5, en_us), "$1,234.50");
    EXPECT_EQ(format_number(-1234.5, en_us), "($1,234.50)");
    const std::string euro = currency_picture("\xE2\x82\xAC", 3, 8, 2);
    EXPECT_EQ(format_number(1234.5, euro), "1,234.50 \xE2\x82\xAC");
    EXPECT_EQ(format_number(-1234.5, euro), "-1,234.50 \xE2\x82\xAC");
    EXPECT_EQ(format_number(-5, currency_picture("kr", 2, 9, 0)), "-kr 5");
    EXPECT_EQ(format_number(-5, currency_picture("$", 0, 1, 2)), "-$5.00");
    EXPECT_EQ(format_number(5, currency_picture("0#\"", 1, 0, 1)), "5.00#\"");
    EXPECT_EQ(format_number(5, currency_picture("$", 7, 99, 2)), "$5.00");  // out of range: 0
}

// Other conventions, set for each test and restored after it.
class RegionalFormats : public ::testing::Test {
  protected:
    void SetUp() override {
        currency_ = currency_picture("\xE2\x82\xAC", 3, 8, 2);
        short_date_ = picture_of_locale_pattern("dd.MM.yyyy");
        long_time_ = picture_of_locale_pattern("HH:mm:ss");
        NumberConventions c;
        c.decimal = ",";
        c.thousands = ".";
        c.currency = "\xE2\x82\xAC";
        c.currency_format = currency_;
        c.short_date = short_date_;
        c.long_time = long_time_;
        c.am = "vorm.";
        c.pm = "nachm.";
        set_conventions(c);
    }
    void TearDown() override { set_conventions({}); }

    std::string currency_, short_date_, long_time_;
};

TEST_F(RegionalFormats, PicturesUseTheSeparators) {
    EXPECT_EQ(format_number(1234.5, "#,##0.00"), "1.234,50");
    EXPECT_EQ(format_number(-1234567.891, "#,##0.0#"), "-1.234.567,89");
    EXPECT_EQ(format_number(1536.0 / 1024, "0.0#"), "1,5");
    EXPECT_EQ(format_number(12345, "0.00E+00"), "1,23E+04");
    EXPECT_EQ(format_number(1234567, "#,##0,"), "1.235");
    EXPECT_EQ(format_number(5, "0.00 \"a.b,c\""), "5,00 a.b,c");  // literal text stays
}

TEST_F(RegionalFormats, NamedFormatsFollowTheConventions) {
    EXPECT_EQ(format_number(1234.5, "Standard"), "1.234,50");
    EXPECT_EQ(format_number(1234.5, "Fixed"), "1234,50");
    EXPECT_EQ(format_number(0.125, "Percent"), "12,50%");
    EXPECT_EQ(format_number(1234.5, "Scientific"), "1,23E+03");
    EXPECT_EQ(format_number(1234.5, "General Number"), "1234,5");
    EXPECT_EQ(format_number(1234.5, "Currency"), "1.234,50 \xE2\x82\xAC");
    EXPECT_EQ(format_number(-1234.5, "currency"), "-1.234,50 \xE2\x82\xAC");
    EXPECT_EQ(format_number(0, "Yes/No"), "No");
    EXPECT_EQ(format_date(kEvening, "Short Date"), "22.11.2026");
    EXPECT_EQ(format_date(kEvening, "Long Time"), "18:05:09");
    EXPECT_EQ(format_date(kEvening, "General Date"), "22.11.2026 18:05:09");
    EXPECT_EQ(format_date(kNov22, "General Date"), "22.11.2026");
    EXPECT_EQ(format_date(kEvening - kNov22, "general date"), "18:05:09");
    EXPECT_EQ(format_date(kEvening, "ddddd ttttt"), "22.11.2026 18:05:09");
    EXPECT_EQ(format_date(kEvening, "c"), "22.11.2026 18:05:09");
    EXPECT_EQ(format_date(kEvening, "h:nn AMPM"), "6:05 nachm.");
    EXPECT_EQ(format_date(kEvening, "Long Date"), "Sunday, November 22, 2026");  // en-US's
    EXPECT_EQ(format_date(kEvening, "yyyy-mm-dd hh:nn"), "2026-11-22 18:05");
}

TEST_F(RegionalFormats, GeneralFormsStayEnUs) {
    EXPECT_EQ(format_number(1234.5, ""), "1234.5");
    EXPECT_EQ(format_number(1234.5, "@"), "1234.5");
    EXPECT_EQ(format_general_number(0.5), "0.5");
    EXPECT_EQ(format_date(kEvening, ""), "11/22/2026 6:05:09 PM");
    EXPECT_EQ(format_general_date(kEvening), "11/22/2026 6:05:09 PM");
}

// Parsed pictures are dropped when the conventions change.
TEST(RegionalFormatsCache, FollowsEveryChange) {
    EXPECT_EQ(format_number(1234.5, "#,##0.00"), "1,234.50");
    EXPECT_EQ(format_date(kEvening, "Short Date"), "11/22/2026");
    NumberConventions c;
    c.decimal = ",";
    c.thousands = " ";
    c.short_date = "yyyy-mm-dd";
    set_conventions(c);
    EXPECT_EQ(format_number(1234.5, "#,##0.00"), "1 234,50");
    EXPECT_EQ(format_date(kEvening, "Short Date"), "2026-11-22");
    c.short_date = "ddddd";  // a picture that names itself falls back to en-US's
    set_conventions(c);
    EXPECT_EQ(format_date(kEvening, "Short Date"), "11/22/2026");
    EXPECT_EQ(format_date(kEvening, "c"), "11/22/2026 6:05:09 PM");
    set_conventions({});
    EXPECT_EQ(format_number(1234.5, "#,##0.00"), "1,234.50");
    EXPECT_EQ(format_date(kEvening, "Short Date"), "11/22/2026");
}

}  // namespace
}  // namespace quiller::value
