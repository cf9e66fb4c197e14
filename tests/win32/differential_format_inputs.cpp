// Inputs of the formatter's comparison: the rows of the reference formatting tables, the named
// formats over chosen values, and generated number and date/time pictures (fixed seed).
#include <cmath>
#include <fstream>

#include "differential.hpp"

namespace quiller::differential {
namespace {

constexpr int kGeneratedNumberCases = 5000;
constexpr int kGeneratedDateCases = 5000;
constexpr int kCrossedCases = 400;  // number pictures with dates and date pictures with numbers

// --- Values --------------------------------------------------------------------------------

// Numbers that pictures round, group, scale and sign differently: ties at the places pictures
// keep, whole numbers, fractions, large and tiny magnitudes.
double format_number_value(Rng& r) {
    const double sign = r.chance(35) ? -1 : 1;
    switch (r.below(8)) {
        case 0:
            return sign * r.below(1000);
        case 1:
            return sign * (r.below(2000) + 0.5);  // ties at whole digits
        case 2:
            return sign * r.below(200000) / 1000.0 + sign * 0.0005;  // ties at three places
        case 3:
            return sign * r.below(100000) / 8.0;
        case 4:
            return sign * r.below(1000000000) / std::pow(10.0, r.below(7));
        case 5:
            return sign * (1 + r.below(999)) * std::pow(10.0, 3 + r.below(19));
        case 6:
            return sign * (1 + r.below(999)) * std::pow(10.0, -3 - r.below(9));
        default:
            return sign * static_cast<double>(r.next() >> 11) / 9007199254740992.0 *
                   std::pow(10.0, r.below(12) - 4);
    }
}

// Day numbers from year 100 to 9999, mostly 1900 to 2100, with whole seconds or any fraction.
double format_date_value(Rng& r) {
    double day;
    switch (r.below(6)) {
        case 0:
            day = -657434 + r.below(657434 + 2958466);
            break;
        case 1:
            day = r.below(3);  // 30 December 1899 and the days after it
            break;
        default:
            day = r.below(73415);  // 1899 to 2100
    }
    switch (r.below(5)) {
        case 0:
            return day;
        case 1:
            return day + 0.5;
        case 2:
            return day + static_cast<double>(r.next() >> 11) / 9007199254740992.0;
        default: {
            const double t = r.below(86400) / 86400.0;
            return day < 0 ? day - t : day + t;
        }
    }
}

// --- Number pictures -----------------------------------------------------------------------

std::string number_section(Rng& r) {
    static const char* const kIntegers[] = {"0",     "#",   "00",    "#0", "##0", "#,##0", "#,##0",
                                            "0,000", "000", "#,###", "##", "",    "0#",    "#,#0"};
    static const char* const kFractions[] = {"",   "",    "",    ".",    ".0",   ".00", ".00",
                                             ".#", ".##", ".0#", ".00#", ".000", ".#0", ".0000000"};
    static const char* const kExponents[] = {"E+00", "E-0", "e+0", "E+000", "e-00", "E+0", "E-00"};
    static const char* const kScales[] = {",", ",,", ",."};
    static const char* const kBefore[] = {
        "", "", "", "", "$", "(", "\"x\"", "\\$", "-", "+", "\"Total: \"", "\\#", " ", "$ "};
    static const char* const kAfter[] = {"",    "",  "",  "",          ")",  " ",   "\" files\"",
                                         "\\%", "-", "+", "\"units\"", " %", "\\ ", "\"\""};
    std::string s = r.pick(kBefore);
    if (r.chance(4)) s += "%";
    std::string digits = std::string(r.pick(kIntegers)) + r.pick(kFractions);
    if (digits.empty() || digits == ".") digits = "0" + digits;
    if (r.chance(5) && digits.find('.') == std::string::npos) digits += r.pick(kScales);
    s += digits;
    if (r.chance(12)) s += r.pick(kExponents);
    if (r.chance(8)) s += "%";
    return s + r.pick(kAfter);
}

std::string number_picture(Rng& r) {
    static const char* const kZeroSections[] = {"\"zero\"", "-", "0", "\"\"", "\\-"};
    std::string s = number_section(r);
    const int sections = r.chance(65) ? 1 : r.chance(60) ? 2 : 3;
    if (sections >= 2) s += ";" + (r.chance(10) ? std::string() : number_section(r));
    if (sections == 3) s += ";" + std::string(r.chance(50) ? r.pick(kZeroSections) : "0.0");
    return s;
}

// --- Date/time pictures --------------------------------------------------------------------

// A date in one of the usual orders, every part in any of its widths.
std::string date_part(Rng& r) {
    static const char* const kDays[] = {"d", "dd", "dd", "ddd", "dddd"};
    static const char* const kMonths[] = {"m", "mm", "mm", "mmm", "mmmm"};
    static const char* const kYears[] = {"yy", "yyyy", "yyyy"};
    static const char* const kSeparators[] = {"/", "/", "-", ".", " ", ", "};
    const std::string d = r.pick(kDays), m = r.pick(kMonths), y = r.pick(kYears);
    const std::string sep = r.pick(kSeparators);
    if (r.chance(10)) return r.chance(50) ? m + sep + y : "dddd" + sep + m + " " + d;
    switch (r.below(3)) {
        case 0:
            return m + sep + d + sep + y;
        case 1:
            return d + sep + m + sep + y;
        default:
            return y + sep + m + sep + d;
    }
}

// A time: an hour, minutes as "n" or as "m" right after the hour, seconds, a 12-hour marker.
std::string time_part(Rng& r) {
    static const char* const kHours[] = {"h", "hh"};
    static const char* const kMinutes[] = {"n", "nn", "nn", "m", "mm", "mm"};
    static const char* const kSeconds[] = {"s", "ss", "ss"};
    static const char* const kMarkers[] = {"",     "",     " AM/PM", " am/pm",
                                           " A/P", " a/p", "AM/PM",  " AMPM"};
    std::string s = r.pick(kHours);
    if (r.chance(85)) s += std::string(":") + r.pick(kMinutes);
    if (r.chance(50)) s += std::string(":") + r.pick(kSeconds);
    return s + r.pick(kMarkers);
}

std::string date_picture(Rng& r) {
    static const char* const kBefore[] = {"\\T", "\"Date: \"", "(", "\"at\" "};
    static const char* const kAfter[] = {")", " \"o'clock\"", "\\Z", "!"};
    static const char* const kMinutesSeconds[] = {"mm:ss", "m:ss", "nn:ss", "n:s", "mm:s"};
    std::string s;
    switch (r.below(7)) {
        case 0:
        case 1:
            s = date_part(r);
            break;
        case 2:
            s = time_part(r);
            break;
        case 3:
            s = date_part(r) + " " + time_part(r);
            break;
        case 4:
            s = r.chance(50) ? "ttttt" : "c";
            if (r.chance(40)) s = r.chance(50) ? date_part(r) + " " + s : s + " " + date_part(r);
            break;
        case 5:
            s = r.pick(kMinutesSeconds);
            break;
        default:
            s = time_part(r) + " " + date_part(r);
    }
    if (r.chance(15)) s = r.pick(kBefore) + s;
    if (r.chance(15)) s += r.pick(kAfter);
    return s;
}

// --- Named formats -------------------------------------------------------------------------

const char* const kNamedNumber[] = {"General Number", "Currency",   "Fixed",  "Standard",
                                    "Percent",        "Scientific", "Yes/No", "True/False",
                                    "On/Off",         "currency",   "FIXED",  "yes/no"};
const char* const kNamedDate[] = {"General Date", "Long Date",   "Medium Date", "Short Date",
                                  "Long Time",    "Medium Time", "Short Time",  "general date",
                                  "SHORT DATE",   "long time",   "medium date", ""};

void add_reference_rows(const std::string& file, bool as_date, std::vector<FormatCase>& out) {
    std::ifstream in(file, std::ios::binary);
    std::string line;
    for (int n = 1; std::getline(in, line); ++n) {
        if (n == 1) continue;  // column names
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const std::size_t tab = line.find('\t');
        const std::size_t tab2 = line.find('\t', tab + 1);
        if (tab == std::string::npos || tab2 == std::string::npos) continue;
        out.push_back(
            {std::stod(line.substr(0, tab)), line.substr(tab + 1, tab2 - tab - 1), as_date});
    }
}

void add_named(Rng& r, std::vector<FormatCase>& out) {
    for (const char* name : kNamedNumber)
        for (int i = 0; i < 60; ++i) out.push_back({format_number_value(r), name, false});
    for (const char* name : kNamedDate)
        for (int i = 0; i < 80; ++i) out.push_back({format_date_value(r), name, true});
}

}  // namespace

std::vector<FormatCase> make_format_cases(const std::string& reference_dir) {
    std::vector<FormatCase> cases;
    add_reference_rows(reference_dir + "/number-formats.tsv", false, cases);
    add_reference_rows(reference_dir + "/date-formats.tsv", true, cases);
    Rng r(20260422);
    add_named(r, cases);
    for (int i = 0; i < kGeneratedNumberCases; ++i)
        cases.push_back({format_number_value(r), number_picture(r), false});
    for (int i = 0; i < kGeneratedDateCases; ++i)
        cases.push_back({format_date_value(r), date_picture(r), true});
    for (int i = 0; i < kCrossedCases; ++i) {
        cases.push_back({format_date_value(r), number_picture(r), true});
        cases.push_back({format_date_value(r), date_picture(r), false});
    }
    return cases;
}

}  // namespace quiller::differential
