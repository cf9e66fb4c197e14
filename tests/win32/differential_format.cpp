// The formatter against VarFormat: every case written by both, and each difference sorted into
// the class that explains it. Each of Wine's known faults is modelled on Quiller's side: a
// changed value, a rewritten picture or a looser comparison. A difference is explained when some
// combination of faults makes Quiller write what Wine wrote; the class is their names joined by
// "+".
#include <algorithm>
#include <functional>

#include "differential_format_rules.hpp"
#include "value/format.hpp"
#include "value/format_picture.hpp"
#include "value/value.hpp"

namespace quiller::differential {
namespace {

bool is_placeholder(char c) {
    return c == '0' || c == '#';
}

// Calls `code(i, section)` for every character of `f` outside quotes and escapes.
void for_each_code(std::string_view f, const std::function<void(std::size_t, int)>& code) {
    int section = 0;
    for (std::size_t i = 0; i < f.size(); ++i) {
        if (f[i] == '\\') {
            ++i;
        } else if (f[i] == '"') {
            const std::size_t close = f.find('"', i + 1);
            i = close == std::string_view::npos ? f.size() : close;
        } else {
            if (f[i] == ';') ++section;
            code(i, section);
        }
    }
}

bool has_code(std::string_view f, std::string_view chars) {
    bool found = false;
    for_each_code(f, [&](std::size_t i, int) { found = found || chars.find(f[i]) != f.npos; });
    return found;
}

// Wine scales by 100 once, for the first "%" after a digit placeholder: the others are text.
std::string percent_once(std::string_view f, double) {
    std::string out(f);
    int section = -1;
    bool digits = false, kept = false;
    std::vector<std::size_t> escaped;
    for_each_code(f, [&](std::size_t i, int s) {
        if (s != section) {
            section = s;
            digits = kept = false;
        }
        if (is_placeholder(f[i])) digits = true;
        if (f[i] != '%') return;
        if (digits && !kept) {
            kept = true;
        } else {
            escaped.push_back(i);
        }
    });
    for (auto it = escaped.rbegin(); it != escaped.rend(); ++it) out.insert(*it, "\\");
    return out;
}

// The commas Quiller reads as "divide by 1000" (not right before a placeholder, after one),
// dropped: Wine groups digits there instead.
std::string without_scaling_commas(std::string_view f, double) {
    std::vector<std::size_t> drop;
    int section = -1;
    bool digits = false, exponent = false;
    for_each_code(f, [&](std::size_t i, int s) {
        if (s != section) {
            section = s;
            digits = exponent = false;
        }
        const char c = f[i];
        if (is_placeholder(c)) digits = true;
        if ((c == 'e' || c == 'E') && i + 2 < f.size() && (f[i + 1] == '+' || f[i + 1] == '-'))
            exponent = exponent || is_placeholder(f[i + 2]);
        if (c != ',' || !digits || exponent) return;
        std::size_t end = i;
        while (end < f.size() && f[end] == ',') ++end;
        if (end == f.size() || !is_placeholder(f[end])) drop.push_back(i);
    });
    std::string out(f);
    for (auto it = drop.rbegin(); it != drop.rend(); ++it) out.erase(*it, 1);
    return out;
}

// The faults that can't be modelled, by the section Quiller writes the value with: a decimal
// point with no digit placeholder before it ("no-integer-places"), a "0" placeholder followed by
// a "#" among the integer places ("zero-before-hash"); null when neither.
const char* unmodelled_fault(const FormatCase& c) {
    using value::detail::Tok;
    const value::detail::Picture p = value::detail::parse_picture(c.format);
    int used = 0;
    if (c.value < 0 && p.section_count >= 2 && p.sections[1].count) used = 1;
    if (c.value == 0 && p.section_count >= 3 && p.sections[2].count) used = 2;
    const value::detail::NumberSection& s = p.sections[used];
    bool zero = false;
    for (std::uint32_t i = s.first; i < s.first + s.count; ++i) {
        const Tok kind = p.tokens[i].kind;
        if (kind == Tok::Point) return s.int_places == 0 ? "no-integer-places" : nullptr;
        if (kind == Tok::Hash && zero) return "zero-before-hash";
        zero = zero || kind == Tok::Zero;
    }
    return nullptr;
}

const std::vector<Fault> kNumberFaults = {
    {.name = "sign-place",
     .applies = [](const FormatCase& c) { return c.value < 0; },
     .changes = kStripMinus},
    {.name = "half",
     .applies = [](const FormatCase& c) { return c.value != 0; },
     .scale = 1 - 1e-12},
    {.name = "below-one",
     .applies = [](const FormatCase& c) { return c.value != 0; },
     .scale = 1e-12},
    {.name = "percent", .rewrite = percent_once},
    {.name = "scale-comma", .rewrite = without_scaling_commas, .changes = kStripCommas},
    {.name = "exponent-grouping",
     .applies =
         [](const FormatCase& c) { return has_code(c.format, "eE") && has_code(c.format, ","); },
     .changes = kStripCommas},
    {.name = "general-text-case",
     .applies = [](const FormatCase& c) { return has_code(c.format, "@&"); },
     .changes = kLowerExponent},
};

// The class of a number picture's difference: the faults that explain it, a fault that can't be
// modelled ("no-integer-places", "zero-before-hash"), or "text" when nothing explains it.
std::string number_format_class(const FormatCase& c, const std::string& system) {
    if (const char* fault = unmodelled_fault(c)) return fault;
    const std::string name = explain(c, system, kNumberFaults);
    return name.empty() ? "text" : name;
}

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

std::string Trial::normal(std::string s) const {
    if (changes & kStripCommas) std::erase(s, ',');
    if (changes & kLowerExponent) std::ranges::replace(s, 'E', 'e');
    return s;
}

// With kStripMinus, Quiller's leading "-" and any one "-" of Wine's text are dropped.
bool Trial::matches(const std::string& ours, const std::string& system) const {
    if (!(changes & kStripMinus)) return normal(ours) == normal(system);
    if (!ours.starts_with('-')) return false;
    const std::string mine = normal(ours.substr(1));
    for (std::size_t at = system.find('-'); at != std::string::npos; at = system.find('-', at + 1))
        if (normal(system.substr(0, at) + system.substr(at + 1)) == mine) return true;
    return false;
}

std::string explain(const FormatCase& c, const std::string& system,
                    const std::vector<Fault>& faults) {
    std::vector<const Fault*> usable;
    for (const Fault& f : faults)
        if (f.applies ? f.applies(c) : f.rewrite(c.format, c.value) != c.format)
            usable.push_back(&f);
    const std::size_t n = usable.size();
    for (std::size_t size = 1; size <= 3 && size <= n; ++size) {
        for (std::uint32_t mask = 1; mask < (1u << n); ++mask) {
            if (static_cast<std::size_t>(__builtin_popcount(mask)) != size) continue;
            Trial t{c.value, c.format};
            std::string name;
            for (std::size_t k = 0; k < n; ++k) {
                if (!(mask & (1u << k))) continue;
                const Fault& f = *usable[k];
                t.value *= f.scale;
                if (f.rewrite) t.format = f.rewrite(t.format, t.value);
                t.changes |= f.changes;
                name += (name.empty() ? "" : "+") + std::string(f.name);
            }
            if (name.find("half+below-one") != std::string::npos) continue;
            if (t.matches(t.quiller(c.as_date), system)) return name;
        }
    }
    return {};
}

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
