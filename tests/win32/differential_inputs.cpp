// Inputs of the differential test: hand-picked cases, the inputs of the reference tables, and
// generated texts and values. A fixed seed makes every run test the same inputs.
#include <cctype>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <set>

#include "differential.hpp"

namespace quiller::differential {
namespace {

constexpr int kGeneratedNumberTexts = 6000;
constexpr int kGeneratedDateTexts = 8000;
constexpr int kGeneratedJunk = 1500;
constexpr int kGeneratedNumbers = 4000;
constexpr int kGeneratedDates = 4000;

std::string digits(Rng& r, int count) {
    std::string s;
    for (int i = 0; i < count; ++i) s += static_cast<char>('0' + r.below(10));
    return s;
}

// --- Numbers -------------------------------------------------------------------------------

// "1,234,567" with well-placed separators, or groups of random length.
std::string grouped(Rng& r) {
    std::string s = std::to_string(1 + r.below(999));
    const int groups = 1 + r.below(4);
    const bool regular = r.chance(70);
    for (int g = 0; g < groups; ++g) s += "," + digits(r, regular ? 3 : r.below(5));
    return s;
}

std::string mantissa(Rng& r) {
    switch (r.below(6)) {
        case 0:
            return digits(r, 1 + r.below(20));
        case 1:
            return grouped(r);
        case 2:
            return digits(r, r.below(4)) + "." + digits(r, r.below(18));
        case 3:
            return grouped(r) + "." + digits(r, 1 + r.below(4));
        case 4:
            return "." + digits(r, 1 + r.below(6));
        default:
            return digits(r, 1 + r.below(3)) + "." + digits(r, 1 + r.below(3)) +
                   (r.chance(30) ? "." + digits(r, 1) : "");
    }
}

std::string exponent(Rng& r) {
    static const char* const kSigns[] = {"", "", "+", "-"};
    return std::string(r.chance(50) ? "e" : "E") + r.pick(kSigns) + digits(r, r.below(4));
}

std::string radix_number(Rng& r) {
    static const char* const kPrefixes[] = {"&H", "&h", "&O", "&o", "&"};
    static const char kHexDigits[] = "0123456789ABCDEFabcdefg";
    std::string s = r.pick(kPrefixes);
    const int n = r.below(10);
    for (int i = 0; i < n; ++i) s += kHexDigits[r.below(sizeof kHexDigits - 1)];
    return s;
}

std::string number_text(Rng& r) {
    static const char* const kBefore[] = {"",   "",   "",   "+",  "-",  "$", "(",  "($", "$-",
                                          "-$", "+$", "(-", "- ", "$ ", " ", "  ", "--", "+-"};
    static const char* const kAfter[] = {"",   "",  "",   "-", "+", "$", ")", "$)", " -",
                                         "- ", " ", "  ", "%", "e", ".", ",", ")-"};
    std::string body = r.chance(8) ? radix_number(r) : mantissa(r);
    if (r.chance(20)) body += exponent(r);
    return std::string(r.pick(kBefore)) + body + r.pick(kAfter);
}

// --- Dates ---------------------------------------------------------------------------------

const char* const kMonths[] = {"January",   "February", "March",    "April",
                               "May",       "June",     "July",     "August",
                               "September", "October",  "November", "December"};

std::string with_random_case(Rng& r, std::string s) {
    const int mode = r.below(4);
    for (char& c : s) {
        if (mode == 1 || (mode == 3 && r.chance(50))) c = static_cast<char>(std::toupper(c));
        if (mode == 2) c = static_cast<char>(std::tolower(c));
    }
    return s;
}

std::string month_name(Rng& r) {
    std::string m = kMonths[r.below(12)];
    if (r.chance(40)) m = m.substr(0, 3);
    if (r.chance(5)) m = m.substr(0, 4);
    return with_random_case(r, m);
}

// A date part of one to four digits, biased towards the values dates use.
std::string date_number(Rng& r) {
    static const char* const kYears[] = {"0",    "00",   "29",   "30",    "49",   "50",   "99",
                                         "100",  "1899", "1900", "1999",  "2000", "2029", "2030",
                                         "2049", "2050", "9999", "10000", "0001", "01"};
    switch (r.below(5)) {
        case 0:
            return std::to_string(1 + r.below(12));
        case 1:
            return std::to_string(1 + r.below(31));
        case 2:
            return r.pick(kYears);
        case 3:
            return std::to_string(1900 + r.below(200));
        default:
            return digits(r, 1 + r.below(4));
    }
}

std::string numeric_date(Rng& r) {
    static const char* const kSeparators[] = {"/", "/", "-", "-", ".", " ", ", ", "/ "};
    const char* sep = r.pick(kSeparators);
    std::string s = date_number(r) + sep + date_number(r);
    if (r.chance(70)) s += (r.chance(90) ? sep : r.pick(kSeparators)) + date_number(r);
    return s;
}

std::string named_date(Rng& r) {
    static const char* const kGaps[] = {" ", " ", ", ", "-", "/", ",", ". ", "  "};
    const std::string m = month_name(r), d = date_number(r), y = date_number(r);
    const char* g = r.pick(kGaps);
    switch (r.below(6)) {
        case 0:
            return m + g + d + (r.chance(70) ? std::string(g) + y : "");
        case 1:
            return d + g + m + (r.chance(70) ? std::string(g) + y : "");
        case 2:
            return y + g + m + g + d;
        case 3:
            return m + g + d + ", " + y;
        case 4:
            return m + g + y;
        default:
            return d + m + y;
    }
}

std::string time_text(Rng& r) {
    static const char* const kMeridiem[] = {"",   "",   "",  " AM", " PM",   "AM",  "pm",
                                            " a", " p", "a", "P",   " A.M.", " am", " Pm"};
    const int hour = r.chance(90) ? r.below(25) : r.below(100);
    std::string s = std::to_string(hour);
    const int parts = r.below(3);
    if (parts >= 1)
        s += (r.chance(90) ? ":" : ".") + std::string(r.chance(80) ? "" : "0") +
             std::to_string(r.chance(95) ? r.below(60) : r.below(100));
    if (parts >= 2) s += ":" + std::to_string(r.chance(95) ? r.below(60) : 60 + r.below(40));
    return s + r.pick(kMeridiem);
}

std::string date_text(Rng& r) {
    static const char* const kDayNames[] = {"Monday, ", "Mon ", "tuesday ", "Sat, ", "Sunday "};
    std::string date = r.chance(55) ? numeric_date(r) : named_date(r);
    if (r.chance(5)) date = r.pick(kDayNames) + date;
    switch (r.below(6)) {
        case 0:
            return time_text(r);
        case 1:
            return date + " " + time_text(r);
        case 2:
            return time_text(r) + " " + date;
        default:
            return date;
    }
}

std::string junk(Rng& r) {
    static const char kChars[] = "0123456789 /-.:,$()+eEAPMamp&HhOo#%'\"xz\t";
    static const char* const kWide[] = {"\xC3\xA9", "\xE2\x82\xAC", "\xC2\xA0", "\xEF\xBC\x91"};
    std::string s;
    const int n = r.below(12);
    for (int i = 0; i < n; ++i) {
        if (r.chance(3)) {
            s += r.pick(kWide);
        } else {
            s += kChars[r.below(sizeof kChars - 1)];
        }
    }
    return s;
}

// --- Values --------------------------------------------------------------------------------

double random_number(Rng& r) {
    const double mantissa = static_cast<double>(r.next() >> 11) / 9007199254740992.0;
    switch (r.below(5)) {
        case 0:
            return static_cast<double>(r.below(2000000) - 1000000);
        case 1:
            return (r.below(20001) - 10000) / 4.0;
        case 2:
            return std::round(mantissa * 1e6) / 1e3;
        default: {
            const double v = mantissa * std::pow(10.0, r.below(50) - 25);
            return r.chance(30) ? -v : v;
        }
    }
}

// Day numbers from year 100 to 9999, whole days, whole seconds or any fraction.
double random_date(Rng& r) {
    const double day = -657434 + r.below(657434 + 2958466);
    switch (r.below(3)) {
        case 0:
            return day;
        case 1:
            return day + (day < 0 ? -1 : 1) * r.below(86400) / 86400.0;
        default:
            return day + static_cast<double>(r.next() >> 11) / 9007199254740992.0;
    }
}

// --- Hand-picked cases ---------------------------------------------------------------------

const char* const kNumberCases[] = {"0",
                                    "-0",
                                    "1",
                                    "1.",
                                    ".5",
                                    "1e5",
                                    "1E+05",
                                    "1e-5",
                                    "1,000",
                                    "1,00",
                                    ",5",
                                    "1 2",
                                    "$1,234.56",
                                    "($1,234.56)",
                                    "(1)",
                                    "1-",
                                    "1+",
                                    "+ 1",
                                    "- 1",
                                    "1 -",
                                    "&H7FFFFFFF",
                                    "&H80000000",
                                    "&HFFFFFFFF",
                                    "&O17",
                                    "&O8",
                                    "1e308",
                                    "1e309",
                                    "1e-400",
                                    "4.9e-324",
                                    "123456789012345678901234567890",
                                    "0.1",
                                    "0.30000000000000004",
                                    "1.7976931348623157e308",
                                    "9007199254740993",
                                    "1,234,567.891",
                                    "1.234,5",
                                    "1..2",
                                    "1.2.3",
                                    "1e",
                                    "e5",
                                    "1d5",
                                    "\t1",
                                    "1\t",
                                    "\xC2\xA0"
                                    "1",
                                    "1\xC2\xA0",
                                    "$",
                                    "()",
                                    "-",
                                    "+",
                                    ".",
                                    ",",
                                    "1,",
                                    "1,,2"};

const char* const kDateCases[] = {"1/1/2001",
                                  "12/31/1999",
                                  "2/29/2000",
                                  "2/29/1900",
                                  "2/29/2001",
                                  "13/1/2001",
                                  "31/12/2001",
                                  "2001/12/31",
                                  "2001-12-31",
                                  "12-31-01",
                                  "1/1/29",
                                  "1/1/30",
                                  "1/1/49",
                                  "1/1/50",
                                  "1/1/99",
                                  "1/1/00",
                                  "1/1/100",
                                  "1/1/9999",
                                  "1/1/10000",
                                  "12/31",
                                  "12/2001",
                                  "Dec 31, 2001",
                                  "31 December 2001",
                                  "December 2001",
                                  "2001 Dec 31",
                                  "Dec 31",
                                  "Monday, December 31, 2001",
                                  "10:30",
                                  "10:30:15",
                                  "10:30 PM",
                                  "10 PM",
                                  "10PM",
                                  "12 AM",
                                  "12 PM",
                                  "0:00",
                                  "23:59:59",
                                  "24:00",
                                  "12:60",
                                  "1.5",
                                  "10.30",
                                  "1/1/2001 10:30 PM",
                                  "10:30 PM 1/1/2001",
                                  "1/1/2001 10:30:15 AM",
                                  "Jan",
                                  "Jan 1 2001 1:00 pm",
                                  "1 2 3",
                                  "1-2-3",
                                  "1.2.3",
                                  "100",
                                  "1/1",
                                  "1//1",
                                  "/1/1",
                                  "1/1/",
                                  "a1/1/2001",
                                  "1/1/2001a"};

void add_reference_inputs(const std::string& file, std::vector<std::string>& out) {
    std::ifstream in(file, std::ios::binary);
    std::string line;
    for (int n = 1; std::getline(in, line); ++n) {
        if (n == 1) continue;  // column names
        if (!line.empty() && line.back() == '\r') line.pop_back();
        out.push_back(line.substr(0, line.find('\t')));
    }
}

// Drops repeated texts, keeping the first of each.
void unique(std::vector<std::string>& texts) {
    std::set<std::string> seen;
    std::vector<std::string> kept;
    for (std::string& t : texts)
        if (seen.insert(t).second) kept.push_back(std::move(t));
    texts = std::move(kept);
}

}  // namespace

Inputs make_inputs(const std::string& reference_dir) {
    Inputs in;
    Rng r(20011231);
    in.number_texts.assign(std::begin(kNumberCases), std::end(kNumberCases));
    add_reference_inputs(reference_dir + "/number-recognition.tsv", in.number_texts);
    for (int i = 0; i < kGeneratedNumberTexts; ++i) in.number_texts.push_back(number_text(r));
    in.date_texts.assign(std::begin(kDateCases), std::end(kDateCases));
    add_reference_inputs(reference_dir + "/date-recognition.tsv", in.date_texts);
    for (int i = 0; i < kGeneratedDateTexts; ++i) in.date_texts.push_back(date_text(r));
    for (int i = 0; i < kGeneratedJunk; ++i) {
        const std::string j = junk(r);
        in.number_texts.push_back(j);
        in.date_texts.push_back(j);
    }
    unique(in.number_texts);
    unique(in.date_texts);

    in.numbers = {0,         1,
                  -1,        0.1,
                  0.5,       1e15,
                  1e15 - 1,  999999999999999.4,
                  1e-4,      9.99999e-5,
                  1e-5,      123456789012345.6,
                  1.0 / 3,   2.0 / 3,
                  1e100,     -1e-100,
                  5e-324,    1.7976931348623157e308,
                  0.1 + 0.2, 100,
                  1e16,      12345678901234567.0};
    for (int i = 0; i < kGeneratedNumbers; ++i) in.numbers.push_back(random_number(r));
    in.dates = {0,
                1,
                -1,
                0.5,
                -0.5,
                -1.25,
                1.5,
                2,
                60,
                61,
                36526,
                36526.999999,
                2958465,
                2958465.99999,
                -657434,
                37256.5,
                0.0000115740740740741,
                0.99999};
    for (int i = 0; i < kGeneratedDates; ++i) in.dates.push_back(random_date(r));
    return in;
}

}  // namespace quiller::differential
