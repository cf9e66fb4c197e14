// Wine's faults with date/time pictures, reproduced on Quiller's side: "m" and "mm" read as
// months where they mean minutes, AM/PM markers that leave the 24-hour clock, and an empty
// long time at midnight. The parsed picture is changed and rendered by Quiller's renderer.
#include <cctype>
#include <cstdio>

#include "differential_format_rules.hpp"
#include "value/format.hpp"
#include "value/format_picture.hpp"
#include "value/value.hpp"

namespace quiller::differential {
namespace {

using value::detail::Picture;
using value::detail::Tok;

// A run of one date letter (or "ttttt", or an AM/PM marker as 'a') outside quotes and escapes.
struct Run {
    char letter;
    std::size_t start, length;
};

std::vector<Run> date_runs(std::string_view f) {
    std::vector<Run> runs;
    for (std::size_t i = 0; i < f.size();) {
        const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(f[i])));
        if (c == '\\') {
            i += 2;
        } else if (c == '"') {
            const std::size_t close = f.find('"', i + 1);
            i = close == std::string_view::npos ? f.size() : close + 1;
        } else if (c == 'a' && (ascii_iequals(f.substr(i, 5), "am/pm") ||
                                ascii_iequals(f.substr(i, 3), "a/p") ||
                                ascii_iequals(f.substr(i, 4), "ampm"))) {
            const std::size_t n = ascii_iequals(f.substr(i, 5), "am/pm")  ? 5
                                  : ascii_iequals(f.substr(i, 4), "ampm") ? 4
                                                                          : 3;
            runs.push_back({'a', i, n});
            i += n;
        } else if (std::string_view("dwmqyhnsct").find(c) != std::string_view::npos) {
            std::size_t end = i;
            while (end < f.size() && std::tolower(static_cast<unsigned char>(f[end])) == c) ++end;
            runs.push_back({c, i, end - i});
            i = end;
        } else {
            ++i;
        }
    }
    return runs;
}

// Wine reads "m" and "mm" as months also right after an hour or right before seconds: those
// runs become the month as literal text.
std::string months_for_minutes(std::string_view f, double serial) {
    const std::vector<Run> runs = date_runs(f);
    const value::DateParts d = value::split_date(serial);
    std::string out(f);
    for (std::size_t k = runs.size(); k-- > 0;) {
        const Run& r = runs[k];
        if (r.letter != 'm' || r.length > 2) continue;
        const bool after_hour = k > 0 && runs[k - 1].letter == 'h';
        const bool before_seconds = k + 1 < runs.size() && runs[k + 1].letter == 's';
        if (!after_hour && !before_seconds) continue;
        char month[8];
        std::snprintf(month, sizeof month, r.length == 2 ? "%02d" : "%d", d.month);
        out.replace(r.start, r.length, "\"" + std::string(month) + "\"");
    }
    return out;
}

// Wine also reads "m" and "mm" as minutes anywhere after an hour ("hh:nn mm/dd"): those runs
// become the minutes as literal text. Runs Quiller already reads as minutes are left alone.
std::string minutes_for_months(std::string_view f, double serial) {
    const std::vector<Run> runs = date_runs(f);
    const value::DateParts d = value::split_date(serial);
    std::string out(f);
    bool hour_before = false;
    std::vector<const Run*> changed;
    for (std::size_t k = 0; k < runs.size(); ++k) {
        const Run& r = runs[k];
        const bool minutes = (k > 0 && runs[k - 1].letter == 'h') ||
                             (k + 1 < runs.size() && runs[k + 1].letter == 's');
        if (r.letter == 'm' && r.length <= 2 && hour_before && !minutes) changed.push_back(&r);
        hour_before = hour_before || r.letter == 'h';
    }
    for (auto it = changed.rbegin(); it != changed.rend(); ++it) {
        char minute[8];
        std::snprintf(minute, sizeof minute, (*it)->length == 2 ? "%02d" : "%d", d.minute);
        out.replace((*it)->start, (*it)->length, "\"" + std::string(minute) + "\"");
    }
    return out;
}

bool is_midnight(double serial) {
    const value::DateParts d = value::split_date(serial);
    return d.hour == 0 && d.minute == 0 && d.second == 0;
}

// Renders the date picture with the trial's changes.
std::string render_changed(const Trial& t) {
    Picture p = value::detail::parse_picture(t.format);
    if (t.twenty_four_hour) p.twelve_hour = false;
    if (t.blank_midnight && is_midnight(t.value)) {
        if (ascii_iequals(t.format, "long time")) return {};
        std::erase_if(p.tokens, [](const auto& token) { return token.kind == Tok::LongTime; });
    }
    std::string out;
    value::detail::render_date(p, t.value, out);
    return out;
}

bool has_picture_kind(const FormatCase& c, value::detail::PictureKind kind) {
    return value::detail::parse_picture(c.format).kind == kind;
}

// Wine loses its place at an AM/PM marker that more of the picture follows, and at a "c": it
// drops or garbles the text from there on (writes "P03" for "PM 03", "1" for a "c" after other
// parts, a stray character after a "c" at the end). The text before them must still agree.
std::string garbled_tail(const FormatCase& c, const std::string& system) {
    const Picture p = value::detail::parse_picture(c.format);
    if (p.kind != value::detail::PictureKind::Date) return {};
    for (std::size_t k = 0; k < p.tokens.size(); ++k) {
        const Tok kind = p.tokens[k].kind;
        if (kind != Tok::AmPm && kind != Tok::GeneralDate) continue;
        Picture head = p;
        head.tokens.resize(k);
        for (const bool twelve : {p.twelve_hour, false}) {
            head.twelve_hour = twelve;
            std::string out;
            value::detail::render_date(head, c.value, out);
            if (system.starts_with(out))
                return kind == Tok::AmPm
                           ? (twelve == p.twelve_hour ? "after-marker" : "twelve-hour+after-marker")
                           : "after-c";
        }
        return {};
    }
    return {};
}

}  // namespace

std::string Trial::quiller(bool as_date) const {
    const bool changed_picture = twenty_four_hour || blank_midnight;
    if (changed_picture &&
        value::detail::parse_picture(format).kind == value::detail::PictureKind::Date)
        return render_changed(*this);
    return as_date ? value::format_date(value, format) : value::format_number(value, format);
}

const std::vector<Fault>& date_faults() {
    using value::detail::PictureKind;
    static const std::vector<Fault> faults = {
        {"minutes",
         [](const FormatCase& c) { return months_for_minutes(c.format, c.value) != c.format; },
         [](Trial& t) { t.format = months_for_minutes(t.format, t.value); }},
        {"month-after-time",
         [](const FormatCase& c) { return minutes_for_months(c.format, c.value) != c.format; },
         [](Trial& t) { t.format = minutes_for_months(t.format, t.value); }},
        {"twelve-hour",
         [](const FormatCase& c) { return value::detail::parse_picture(c.format).twelve_hour; },
         [](Trial& t) { t.twenty_four_hour = true; }},
        {"midnight",
         [](const FormatCase& c) {
             return is_midnight(c.value) && has_picture_kind(c, PictureKind::Date);
         },
         [](Trial& t) { t.blank_midnight = true; }},
    };
    return faults;
}

std::string failed_date_class(const FormatCase& c) {
    const Picture p = value::detail::parse_picture(c.format);
    for (std::size_t k = 0; k < p.tokens.size(); ++k) {
        if (p.tokens[k].kind == Tok::GeneralDate) return "failed-at-c";
        if (p.tokens[k].kind == Tok::AmPm && k + 1 < p.tokens.size()) return "failed-after-marker";
    }
    return "failed";
}

std::string date_format_class(const FormatCase& c, const std::string& system) {
    if (ascii_iequals(c.format, "medium date")) return "medium-date";
    std::string name = explain(c, system, date_faults());
    if (name.empty()) name = garbled_tail(c, system);
    return name.empty() ? "text" : name;
}

}  // namespace quiller::differential
