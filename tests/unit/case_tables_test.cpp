// The value layer and the INI profile code against tables: every row of the reference tables in
// tests/reference (the platform's own answers, en-US, on a clock in 2026) but those listed in
// cases/reference-deviations.tsv with the project's answer and the reason, and the cases of our
// own in cases/value.tsv, text.tsv and ini.tsv.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <map>
#include <optional>
#include <regex>
#include <string>

#include "os/ini_profile.hpp"
#include "reference_table.hpp"
#include "value/format.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller::value {
namespace {

using test::load_cases;
using test::load_reference;
using test::ReferenceRow;
using Cells = std::vector<std::string>;

constexpr int kReferenceYear = 2026;  // the year of the clock the tables were made on

// A number, "2026-11-22", "2026-11-22 18:05:09" or "18:05:09". Before 30 December 1899 the time
// counts forward from midnight although the day number is negative.
double value_of(const std::string& s) {
    static const std::regex date(R"((\d+)-(\d+)-(\d+)(?: (\d+):(\d+):(\d+))?)");
    static const std::regex time(R"((\d+):(\d+):(\d+))");
    std::smatch m;
    const auto n = [&](int i) { return std::stoi(m[i].str()); };
    if (std::regex_match(s, m, time)) return time_serial(n(1), n(2), n(3));
    if (std::regex_match(s, m, date)) {
        const double day = date_serial(n(1), n(2), n(3));
        const double t = m[4].matched ? time_serial(n(4), n(5), n(6)) : 0;
        return day < 0 ? day - t : day + t;
    }
    char* end = nullptr;
    const double v = std::strtod(s.c_str(), &end);
    EXPECT_TRUE(!s.empty() && *end == '\0') << "bad value: " << s;
    return v;
}

std::string number_text(std::optional<double> v, const char* none) {
    if (!v) return none;
    char buf[40];
    return std::string(buf, std::to_chars(buf, buf + sizeof buf, *v).ptr);
}

// Same number (with `zero_sign`, the sign of zero too); with a `tolerance`, relatively close.
bool same_number(const std::string& got, const std::string& expected, double tolerance = 0,
                 bool zero_sign = true) {
    if (got == expected) return true;
    if (!std::isdigit(static_cast<unsigned char>(got.back())) || expected.starts_with("NOT"))
        return false;
    const double g = value_of(got), e = value_of(expected);
    if (tolerance > 0) return std::fabs(g - e) <= tolerance * (1 + std::fabs(e));
    return g == e && (!zero_sign || std::signbit(g) == std::signbit(e));
}

// --- Reference tables ------------------------------------------------------------------------

struct Deviation {
    ReferenceRow entry;
    int uses = 0;
};

std::vector<Deviation>& deviations() {
    static std::vector<Deviation> all = [] {
        std::vector<Deviation> d;
        for (ReferenceRow& row : load_cases("reference-deviations.tsv")) d.push_back({row});
        return d;
    }();
    return all;
}

Deviation* find_deviation(const std::string& table, const ReferenceRow& row) {
    for (Deviation& d : deviations()) {
        const Cells& e = d.entry.cells;
        if (e.size() >= 4 && e[0] == table && std::stoi(e[1]) == row.line &&
            e.size() - 4 < row.cells.size() &&
            std::equal(e.begin() + 2, e.end() - 2, row.cells.begin()))
            return &d;
    }
    return nullptr;
}

// Checks every row of `table` (inputs, then the answer) with `ours`.
void check_reference(const std::string& table, std::size_t min_rows,
                     const std::function<std::string(const Cells&)>& ours,
                     const std::function<bool(const std::string&, const std::string&)>& same) {
    const std::vector<ReferenceRow> rows = load_reference(table);
    ASSERT_GT(rows.size(), min_rows) << table;
    for (const ReferenceRow& row : rows) {
        const std::string got = ours(row.cells), &expected = row.cells.back();
        const std::string where = table + " line " + std::to_string(row.line) + " [" +
                                  row.cells[0] + "] " + (row.cells.size() > 2 ? row.cells[1] : "");
        if (Deviation* d = find_deviation(table, row)) {
            ++d->uses;
            EXPECT_EQ(got, d->entry.cells.end()[-2]) << where << ": " << d->entry.cells.back();
            EXPECT_FALSE(same(got, expected)) << where << " now agrees with the table";
        } else {
            EXPECT_TRUE(same(got, expected))
                << where << ": expected " << expected << ", got " << got;
        }
    }
}

TEST(ValueReference, EveryRowOfTheTables) {
    check_reference(
        "number-recognition.tsv", 50,
        [](const Cells& c) {
            const std::optional<double> v = parse_locale_number(c[0]);
            EXPECT_EQ(is_numeric(c[0]), v.has_value()) << c[0];
            return number_text(v, "NOTNUMBER");
        },
        [](const std::string& got, const std::string& e) { return same_number(got, e); });
    // The table writes day numbers with 15 significant digits; a second is 1.2e-5 of a day.
    check_reference(
        "date-recognition.tsv", 2000,
        [](const Cells& c) { return number_text(parse_date(c[0], kReferenceYear), "NOTDATE"); },
        [](const std::string& got, const std::string& e) { return same_number(got, e, 1e-13); });
    check_reference(
        "general-text.tsv", 20,
        [](const Cells& c) {
            const double v = value_of(c[1]);
            return c[0] == "date" ? format_general_date(v) : format_general_number(v);
        },
        std::equal_to<>());
    check_reference(
        "number-formats.tsv", 600,
        [](const Cells& c) { return format_number(value_of(c[0]), c[1]); }, std::equal_to<>());
    check_reference(
        "date-formats.tsv", 600, [](const Cells& c) { return format_date(value_of(c[0]), c[1]); },
        std::equal_to<>());
    // The "General Date" rows of the formatting table are the general form.
    for (const ReferenceRow& row : load_reference("date-formats.tsv")) {
        if (row.cells[1] != "General Date") continue;
        EXPECT_EQ(format_general_date(value_of(row.cells[0])), row.cells[2]) << row.line;
    }
    for (const Deviation& d : deviations())
        EXPECT_EQ(d.uses, 1) << "reference-deviations.tsv line " << d.entry.line;
}

// --- Cases of our own ------------------------------------------------------------------------

using Operation = std::function<std::string(const Cells&)>;

std::string yes_no(bool b) {
    return b ? "true" : "false";
}

std::string split_text(double v) {
    static const char* const kDays[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                        "Thursday", "Friday", "Saturday"};
    const DateParts p = split_date(v);
    return std::to_string(p.year) + "-" + std::to_string(p.month) + "-" + std::to_string(p.day) +
           " " + std::to_string(p.hour) + ":" + std::to_string(p.minute) + ":" +
           std::to_string(p.second) + " " + kDays[(p.weekday + 6) % 7];
}

const std::map<std::string, Operation, std::less<>>& operations() {
    static const std::map<std::string, Operation, std::less<>> ops = {
        {"format-number", [](const Cells& a) { return format_number(value_of(a[0]), a[1]); }},
        {"format-date",
         [](const Cells& a) {
             // A picture in braces is a locale pattern.
             const bool pattern = a[1].starts_with('{');
             return format_date(
                 value_of(a[0]),
                 pattern ? picture_of_locale_pattern(a[1].substr(1, a[1].size() - 2)) : a[1]);
         }},
        {"general-number", [](const Cells& a) { return format_general_number(value_of(a[0])); }},
        {"general-date", [](const Cells& a) { return format_general_date(value_of(a[0])); }},
        {"locale-picture", [](const Cells& a) { return picture_of_locale_pattern(a[0]); }},
        {"currency",
         [](const Cells& a) {
             return format_number(
                 value_of(a[4]),
                 currency_picture(a[0], std::stoi(a[1]), std::stoi(a[2]), std::stoi(a[3])));
         }},
        {"parse-number",
         [](const Cells& a) {
             const std::optional<double> v = parse_locale_number(a[0]);
             EXPECT_EQ(is_numeric(a[0]), v.has_value()) << a[0];
             return number_text(v, "NOTNUMBER");
         }},
        {"leading-number",
         [](const Cells& a) { return number_text(read_leading_number(a[0]), ""); }},
        {"parse-date",
         [](const Cells& a) {
             return number_text(parse_date(a[0], a.size() > 1 ? std::stoi(a[1]) : kReferenceYear),
                                "NOTDATE");
         }},
        {"date-serial",
         [](const Cells& a) {
             return number_text(date_serial(std::stoi(a[0]), std::stoi(a[1]), std::stoi(a[2])), "");
         }},
        {"time-serial",
         [](const Cells& a) {
             return number_text(time_serial(std::stoi(a[0]), std::stoi(a[1]), std::stoi(a[2])), "");
         }},
        {"split-date", [](const Cells& a) { return split_text(value_of(a[0])); }},
        {"valid-utf8", [](const Cells& a) { return yes_no(text::is_valid_utf8(a[0])); }},
        {"decode-script", [](const Cells& a) { return text::decode_script_text(a[0]); }},
        {"char-count", [](const Cells& a) { return std::to_string(text::char_count(a[0])); }},
        {"byte-offset",
         [](const Cells& a) {
             return std::to_string(text::byte_offset_of_char(a[0], std::stoul(a[1])));
         }},
        {"lower", [](const Cells& a) { return text::to_lower(a[0]); }},
        {"upper", [](const Cells& a) { return text::to_upper(a[0]); }},
        {"iequals", [](const Cells& a) { return yes_no(text::iequals(a[0], a[1])); }},
        {"ifind",
         [](const Cells& a) {
             const std::size_t at = text::ifind(a[0], a[1], std::stoul(a[2]));
             return at == std::string_view::npos ? "none" : std::to_string(at);
         }},
        {"replace",
         [](const Cells& a) {
             std::string s = a[0];
             const std::size_t count = text::replace_all(s, a[1], a[2]);
             return s + "|" + std::to_string(count);
         }},
        {"trim", [](const Cells& a) { return std::string(text::trim(a[0])); }},
        {"unquote", [](const Cells& a) { return std::string(text::unquote(a[0])); }},
        {"ini-read",
         [](const Cells& a) {
             return ini::profile_string(ini::parse_profile(a[0]), a[1], a[2], "DEF");
         }},
        {"ini-line-reader",
         [](const Cells& a) {
             const auto v = ini::line_reader_value(ini::index_lines(a[0]), a[1], a[2]);
             return v ? std::string(*v) : "(none)";
         }},
        {"ini-entries",
         [](const Cells& a) {
             std::string joined;
             for (const std::string& e : ini::section_entries(a[0], a[1]))
                 joined += (joined.empty() ? "" : "|") + e;
             return joined;
         }},
        {"ini-edit",
         [](const Cells& a) {
             const ini::EditKind kind = a[1] == "set"          ? ini::EditKind::SetValue
                                        : a[1] == "delete-key" ? ini::EditKind::DeleteKey
                                                               : ini::EditKind::DeleteSection;
             return ini::apply_edit(a[0], {kind, a[2], a[3], a[4]}, a[5]);
         }},
        {"split-path",
         [](const Cells& a) {
             const text::PathParts p = text::split_path(a[0]);
             return std::string(p.directory) + "|" + std::string(p.file);
         }},
    };
    return ops;
}

// The conventions a prefix names: "de", "nbsp", "bare", or none.
void set_named_conventions(std::string_view name) {
    static const std::string euro = "\xE2\x82\xAC", currency = currency_picture(euro, 3, 8, 2),
                             short_date = picture_of_locale_pattern("dd.MM.yyyy"),
                             long_time = picture_of_locale_pattern("HH:mm:ss");
    NumberConventions c;
    if (name == "de") {
        c = {",", ".", euro, currency, short_date, long_time, "vorm.", "nachm."};
    } else if (name == "nbsp" || name == "bare") {
        c.decimal = ",";
        c.thousands = name == "nbsp" ? "\xC2\xA0" : "";
    }
    set_conventions(c);
}

// Numbers compare by value (days within 1e-12), other answers as texts.
bool same_answer(std::string_view op, const std::string& got, const std::string& expected) {
    const bool numeric = op == "parse-number" || op == "leading-number" || op.ends_with("serial") ||
                         op == "parse-date";
    return numeric ? same_number(got, expected, op == "parse-date" ? 1e-12 : 0, false)
                   : got == expected;
}

void check_cases(const std::string& file) {
    ASSERT_GT(test::load_cases(file).size(), 40u) << file;
    test::check_case_table(file, operations(), {set_named_conventions, same_answer});
    set_conventions({});
}

TEST(ValueCases, EveryCaseOfTheTables) {
    check_cases("value.tsv");
    check_cases("text.tsv");
    check_cases("ini.tsv");
}

}  // namespace
}  // namespace quiller::value
