// The formatter against VarFormat: every case written by both, and each difference sorted into
// the class that explains it.
#include "differential_format_rules.hpp"
#include "value/format.hpp"
#include "value/format_picture.hpp"
#include "value/value.hpp"

namespace quiller::differential {
namespace {

// Date pictures and named date formats are told apart from number ones as Quiller parses them.
bool is_date_picture(const std::string& format) {
    using value::detail::PictureKind;
    const PictureKind kind = value::detail::parse_picture(format).kind;
    return kind == PictureKind::Date || kind == PictureKind::GeneralDate;
}

// How Quiller's text differs from the system's: empty when it doesn't; else the class of the
// difference, or of the system's refusal of the picture.
std::string difference(const FormatCase& c, const std::string& ours,
                       const std::optional<std::string>& system) {
    const bool date_picture = is_date_picture(c.format);
    if (!system) return date_picture ? failed_date_class(c) : "failed";
    if (ours == *system) return {};
    if (date_picture) return date_format_class(c, *system);
    // Wine writes a date with a number picture as a general date.
    if (c.as_date && *system == value::format_general_date(c.value)) return "date-as-number";
    return number_format_class(c, *system);
}

}  // namespace

void compare_formats(const std::vector<FormatCase>& cases, Report& report) {
    for (const FormatCase& c : cases) {
        const std::string ours = c.as_date ? value::format_date(c.value, c.format)
                                           : value::format_number(c.value, c.format);
        const std::optional<std::string> system = system_format(c.value, c.format, c.as_date);
        const std::string kind = difference(c, ours, system);
        report.compare(c.as_date ? "format-date" : "format-number",
                       kind.empty() ? nullptr : kind.c_str(), exact_text(c.value) + " " + c.format,
                       "\"" + ours + "\"", system ? "\"" + *system + "\"" : "(failed)");
    }
}

}  // namespace quiller::differential
