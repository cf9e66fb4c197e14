// Hand-written cases for the number side of the value layer: the number test, the
// leading-characters reader and the general number form.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "value/value.hpp"

namespace quiller::value {
namespace {

TEST(ValueNumberTest, AcceptsLocaleForms) {
    EXPECT_EQ(parse_locale_number(" 12 "), 12);
    EXPECT_EQ(parse_locale_number("12-"), -12);
    EXPECT_EQ(parse_locale_number("1,234.5"), 1234.5);
    EXPECT_EQ(parse_locale_number("($1,000.25)"), -1000.25);
    EXPECT_EQ(parse_locale_number("\t-1.5E+3\n"), -1500);
    EXPECT_EQ(parse_locale_number("&h7fffffff"), 2147483647);
    EXPECT_EQ(parse_locale_number("-&O17"), -15);
    EXPECT_EQ(parse_locale_number(".5"), 0.5);
    EXPECT_EQ(parse_locale_number("0.1"), 0.1);
    EXPECT_EQ(parse_locale_number("1e-400"), 0);
}

TEST(ValueNumberTest, RejectsNonNumbers) {
    for (const char* s :
         {"",    " ",    ".",     "-",     "$",   "()",    "(5",  "5)", "1e",
          "1e+", "--5",  "5--",   "12abc", "1 2", "1.2.3", ",5",  "&H", "&H80000000",
          "&O8", "0x1F", "1e309", "inf",   "NaN", "1/2",   "1:30"}) {
        EXPECT_FALSE(is_numeric(s)) << "[" << s << "]";
    }
}

TEST(ValueNumberTest, ManyDigitsRoundCorrectly) {
    std::string ones(1000, '1');
    EXPECT_EQ(parse_locale_number("0." + ones), 0.1111111111111111);
    std::string half = "9007199254740993" + std::string(900, '0') + "1e-901";
    EXPECT_EQ(parse_locale_number(half), 9007199254740994.0);  // just above the halfway point
    EXPECT_EQ(parse_locale_number("9007199254740993"), 9007199254740992.0);  // tie to even
}

TEST(ValueNumberTest, LeadingReader) {
    EXPECT_EQ(read_leading_number("12abc"), 12);
    EXPECT_EQ(read_leading_number("abc"), 0);
    EXPECT_EQ(read_leading_number(""), 0);
    EXPECT_EQ(read_leading_number(" -1.5e3x"), -1500);
    EXPECT_EQ(read_leading_number("1.2.3"), 1.2);
    EXPECT_EQ(read_leading_number("&H1F"), 31);
    EXPECT_EQ(read_leading_number("&o17"), 15);
    EXPECT_EQ(read_leading_number("+.5"), 0.5);
    EXPECT_EQ(read_leading_number("1e"), 1);
    EXPECT_EQ(read_leading_number("2E-x"), 2);
    EXPECT_EQ(read_leading_number("-"), 0);
    EXPECT_EQ(read_leading_number("1,000"), 1);  // no group separators here
    EXPECT_EQ(read_leading_number("$5"), 0);
    EXPECT_EQ(read_leading_number("1e999"), std::numeric_limits<double>::infinity());
}

TEST(ValueNumberTest, GeneralForm) {
    EXPECT_EQ(format_general_number(10.0 / 4), "2.5");
    EXPECT_EQ(format_general_number(7.0 / 3), "2.33333333333333");
    EXPECT_EQ(format_general_number(6.0 / 3), "2");
    EXPECT_EQ(format_general_number(-0.0), "0");
    EXPECT_EQ(format_general_number(1e20), "1E+20");
    EXPECT_EQ(format_general_number(1e-5), "1E-05");
    EXPECT_EQ(format_general_number(0.1 + 0.2), "0.3");
    EXPECT_EQ(format_general_number(-2.0 / 3), "-0.666666666666667");
    EXPECT_EQ(format_general_number(123456789012345.0), "123456789012345");
    EXPECT_EQ(format_general_number(999999999999999.5), "1E+15");
    EXPECT_EQ(format_general_number(0.00012345), "0.00012345");
    EXPECT_EQ(format_general_number(-1.5e-7), "-1.5E-07");
}

TEST(ValueNumberTest, GeneralFormOfNonFinite) {
    EXPECT_EQ(format_general_number(std::numeric_limits<double>::infinity()), "Infinity");
    EXPECT_EQ(format_general_number(-std::numeric_limits<double>::infinity()), "-Infinity");
    EXPECT_EQ(format_general_number(std::numeric_limits<double>::quiet_NaN()), "NaN");
}

TEST(ValueNumberTest, GeneralFormReadsBack) {
    for (double v : {1.0 / 3, 2.0 / 7, 1234.5678, -98765.4321, 3e-12, 6.02e23}) {
        double back = *parse_locale_number(format_general_number(v));
        EXPECT_NEAR(back, v, std::fabs(v) * 1e-14) << v;
    }
}

// The number test with other regional conventions: their separators and currency symbol; the
// leading-characters reader keeps "." whatever they are. Each test restores en-US's.
class RegionalNumberTest : public ::testing::Test {
  protected:
    void SetUp() override {
        NumberConventions c;
        c.decimal = ",";
        c.thousands = ".";
        c.currency = "\xE2\x82\xAC";  // the euro sign
        set_conventions(c);
    }
    void TearDown() override { set_conventions({}); }
};

TEST_F(RegionalNumberTest, NumberTestUsesTheSeparators) {
    EXPECT_TRUE(is_numeric("1.234,5"));
    EXPECT_EQ(parse_locale_number("1.234,5"), 1234.5);
    EXPECT_EQ(parse_locale_number("-0,25"), -0.25);
    EXPECT_EQ(parse_locale_number("1.5"), 15);  // "." separates thousands now
    EXPECT_EQ(parse_locale_number("1.234,5 \xE2\x82\xAC"), 1234.5);
    EXPECT_EQ(parse_locale_number("(\xE2\x82\xAC"
                                  "1,5)"),
              -1.5);
    EXPECT_EQ(parse_locale_number("1,5e2"), 150);
    for (const char* s : {"1,2,3", ".5", "$5",
                          "\xE2\x82\xAC\xE2\x82\xAC"
                          "1"})
        EXPECT_FALSE(is_numeric(s)) << "[" << s << "]";
}

TEST_F(RegionalNumberTest, LeadingReaderKeepsThePoint) {
    EXPECT_EQ(read_leading_number("1.5"), 1.5);
    EXPECT_EQ(read_leading_number("1,5"), 1);
    EXPECT_EQ(format_general_number(1.5), "1.5");
}

TEST(RegionalNumbers, SeparatorsOfSeveralBytesAndNone) {
    NumberConventions c;
    c.decimal = ",";
    c.thousands = "\xC2\xA0";  // a no-break space
    set_conventions(c);
    EXPECT_EQ(parse_locale_number("1\xC2\xA0"
                                  "234\xC2\xA0"
                                  "567,5"),
              1234567.5);
    EXPECT_FALSE(
        is_numeric("1\xC2"
                   "234"));
    c.thousands = "";  // a user may clear it
    set_conventions(c);
    EXPECT_EQ(parse_locale_number("1234,5"), 1234.5);
    EXPECT_FALSE(is_numeric("1.234,5"));
    set_conventions({});
    EXPECT_EQ(parse_locale_number("1,234.5"), 1234.5);
    EXPECT_EQ(parse_locale_number("1.234,5"), 1.2345);  // en-US: "," is skipped after a digit
}

}  // namespace
}  // namespace quiller::value
