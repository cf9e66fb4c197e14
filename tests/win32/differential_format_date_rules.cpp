// Wine's faults with date/time pictures, reproduced on Quiller's side: "m" and "mm" read as
// months where they mean minutes, AM/PM markers that leave the 24-hour clock, and an empty
// long time at midnight. The parsed picture is changed and rendered by Quiller's renderer.
#include <cctype>
#include <cstdio>

#include "differential_format_rules.hpp"
#include "value/format.hpp"
#include "value/format_picture.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller::differential {
namespace {

using value::detail::Picture;
using value::detail::PictureKind;
using value::detail::Tok;

// A run of one date letter (or "ttttt", or an AM/PM marker as 'a') outside quotes and escapes.
struct Run {
    char letter;
    std::size_t start, length;
};

// The length of the AM/PM marker `f` starts with, or 0.
std::size_t marker_length(std::string_view f) {
    for (const std::string_view marker : {"am/pm", "ampm", "a/p"})
        if (text::iequals(f.substr(0, marker.size()), marker)) return marker.size();
    return 0;
}

std::vector<Run> date_runs(std::string_view f) {
    std::vector<Run> runs;
    for (std::size_t i = 0; i < f.size();) {
        const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(f[i])));
        if (c == '\\') {
            i += 2;
        } else if (c == '"') {
            const std::size_t close = f.find('"', i + 1);
            i = close == std::string_view::npos ? f.size() : close + 1;
        } else if (const std::size_t n = marker_length(f.substr(i)); n > 0) {
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

// Wine's readings of "m" and "mm", as literal text: with `as_months`, the runs Quiller reads as
// minutes (right after an hour or right before seconds) become the month, as Wine writes them
// there; else the runs Quiller reads as months anywhere after an hour ("hh:nn mm/dd") become
// the minutes.
std::string m_runs_as(std::string_view f, double serial, bool as_months) {
    const std::vector<Run> runs = date_runs(f);
    const value::DateParts d = value::split_date(serial);
    std::size_t first_hour = 0;
    while (first_hour < runs.size() && runs[first_hour].letter != 'h') ++first_hour;
    std::string out(f);
    for (std::size_t k = runs.size(); k-- > 0;) {
        const Run& r = runs[k];
        const bool minutes = (k > 0 && runs[k - 1].letter == 'h') ||
                             (k + 1 < runs.size() && runs[k + 1].letter == 's');
        if (r.letter != 'm' || r.length > 2) continue;
        if (as_months ? !minutes : minutes || k <= first_hour) continue;
        char part[8];
        std::snprintf(part, sizeof part, r.length == 2 ? "%02d" : "%d",
                      as_months ? d.month : d.minute);
        out.replace(r.start, r.length, "\"" + std::string(part) + "\"");
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
    if (t.changes & kTwentyFourHour) p.twelve_hour = false;
    if ((t.changes & kBlankMidnight) && is_midnight(t.value)) {
        if (text::iequals(t.format, "long time")) return {};
        std::erase_if(p.tokens, [](const auto& token) { return token.kind == Tok::LongTime; });
    }
    std::string out;
    value::detail::render_date(p, t.value, out);
    return out;
}

const std::vector<Fault> kDateFaults = {
    {.name = "minutes",
     .rewrite = [](std::string_view f, double v) { return m_runs_as(f, v, true); }},
    {.name = "month-after-time",
     .rewrite = [](std::string_view f, double v) { return m_runs_as(f, v, false); }},
    {.name = "twelve-hour",
     .applies =
         [](const FormatCase& c) { return value::detail::parse_picture(c.format).twelve_hour; },
     .changes = kTwentyFourHour},
    {.name = "midnight",
     .applies =
         [](const FormatCase& c) {
             return is_midnight(c.value) &&
                    value::detail::parse_picture(c.format).kind == PictureKind::Date;
         },
     .changes = kBlankMidnight},
};

// Wine loses its place at an AM/PM marker that more of the picture follows, and at a "c": it
// drops or garbles the text from there on (writes "P03" for "PM 03", "1" for a "c" after other
// parts, a stray character after a "c" at the end). The text before them must still agree.
std::string garbled_tail(const FormatCase& c, const std::string& system) {
    const Picture p = value::detail::parse_picture(c.format);
    if (p.kind != PictureKind::Date) return {};
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
    if ((changes & (kTwentyFourHour | kBlankMidnight)) &&
        value::detail::parse_picture(format).kind == PictureKind::Date)
        return render_changed(*this);
    return as_date ? value::format_date(value, format) : value::format_number(value, format);
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
    if (text::iequals(c.format, "medium date")) return "medium-date";
    std::string name = explain(c, system, kDateFaults);
    if (name.empty()) name = garbled_tail(c, system);
    return name.empty() ? "text" : name;
}

}  // namespace quiller::differential
