// Date/time pictures: d dd ddd dddd ddddd dddddd, w ww, m mm mmm mmmm, q, y yy yyyy, h hh,
// n nn, s ss, ttttt, c and the AM/PM markers, letters in either case; anything else is literal.
#include "value/ascii_class.hpp"
#include "value/format_picture.hpp"
#include "value/value.hpp"

namespace quiller::value::detail {
namespace {

std::size_t run_length(std::string_view s, std::size_t i) {
    const char c = lower(s[i]);
    std::size_t end = i;
    while (end < s.size() && lower(s[end]) == c) ++end;
    return end - i;
}

// A run of one letter: the longest token of that letter, and how many letters it takes.
struct RunToken {
    Tok kind;
    std::size_t used;
};

RunToken letter_run(char letter, std::size_t run) {
    static constexpr Tok kDays[] = {Tok::Day,     Tok::Day2,      Tok::DayAbbr,
                                    Tok::DayName, Tok::ShortDate, Tok::LongDate};
    static constexpr Tok kMonths[] = {Tok::Month, Tok::Month2, Tok::MonthAbbr, Tok::MonthName};
    switch (letter) {
        case 'd':
            return {kDays[(run > 6 ? 6 : run) - 1], run > 6 ? 6 : run};
        case 'm':
            return {kMonths[(run > 4 ? 4 : run) - 1], run > 4 ? 4 : run};
        case 'y':
            if (run >= 4) return {Tok::Year4, 4};
            return run >= 2 ? RunToken{Tok::Year2, 2} : RunToken{Tok::DayOfYear, 1};
        case 'w':
            return run >= 2 ? RunToken{Tok::Week, 2} : RunToken{Tok::Weekday, 1};
        case 'h':
            return run >= 2 ? RunToken{Tok::Hour2, 2} : RunToken{Tok::Hour, 1};
        case 'n':
            return run >= 2 ? RunToken{Tok::Minute2, 2} : RunToken{Tok::Minute, 1};
        case 's':
            return run >= 2 ? RunToken{Tok::Second2, 2} : RunToken{Tok::Second, 1};
        case 'q':
            return {Tok::Quarter, 1};
        case 'c':
            return {Tok::GeneralDate, 1};
        default:
            return {Tok::Literal, 0};
    }
}

// An AM/PM marker at `s[i]`: its length, 0 when none starts there. "AMPM" writes the regional
// conventions' texts; "AM/PM", "am/pm", "A/P" and "a/p" write their own letters in the case
// given.
std::size_t am_pm(std::string_view s, std::size_t i, Picture& p) {
    Token t{Tok::AmPm, 0, static_cast<std::uint32_t>(p.pool.size()), 0};
    std::size_t used = 0;
    if (starts_with_blind(s, i, "am/pm")) {
        p.pool.append(s.substr(i, 2)).append(s.substr(i + 3, 2));
        t.len = t.n = 2;
        used = 5;
    } else if (starts_with_blind(s, i, "ampm")) {
        const NumberConventions& c = conventions();
        p.pool.append(c.am).append(c.pm);
        t.len = static_cast<std::uint32_t>(c.am.size());
        t.n = static_cast<std::uint8_t>(c.pm.size() < 255 ? c.pm.size() : 255);
        used = 4;
    } else if (starts_with_blind(s, i, "a/p")) {
        p.pool.append(s.substr(i, 1)).append(s.substr(i + 2, 1));
        t.len = t.n = 1;
        used = 3;
    }
    if (used) p.tokens.push_back(t);
    return used;
}

bool is_date_item(Tok k) {
    return k != Tok::Literal;
}

// "m" and "mm" right after an hour, or right before seconds, are minutes (literal text between
// them does not count).
void resolve_minutes(Picture& p) {
    auto& t = p.tokens;
    for (std::size_t k = 0; k < t.size(); ++k) {
        if (t[k].kind != Tok::Month && t[k].kind != Tok::Month2) continue;
        std::size_t prev = k, next = k + 1;
        while (prev > 0 && !is_date_item(t[prev - 1].kind)) --prev;
        while (next < t.size() && !is_date_item(t[next].kind)) ++next;
        const bool after_hour =
            prev > 0 && (t[prev - 1].kind == Tok::Hour || t[prev - 1].kind == Tok::Hour2);
        const bool before_seconds =
            next < t.size() && (t[next].kind == Tok::Second || t[next].kind == Tok::Second2);
        if (after_hour || before_seconds)
            t[k].kind = t[k].kind == Tok::Month ? Tok::Minute : Tok::Minute2;
    }
}

}  // namespace

Picture parse_date_picture(std::string_view s) {
    Picture p;
    p.kind = PictureKind::Date;
    for (std::size_t i = 0; i < s.size();) {
        if (read_literal(s, i, p)) continue;
        if (lower(s[i]) == 't' && starts_with_blind(s, i, "ttttt")) {
            p.add(Tok::LongTime);
            i += 5;
            continue;
        }
        if (lower(s[i]) == 'a') {
            if (std::size_t used = am_pm(s, i, p)) {
                p.twelve_hour = true;
                i += used;
                continue;
            }
        }
        RunToken r = letter_run(lower(s[i]), run_length(s, i));
        if (r.used == 0) {
            p.add_literal(s.substr(i++, 1));
            continue;
        }
        p.add(r.kind);
        i += r.used;
    }
    resolve_minutes(p);
    p.section_count = 1;
    return p;
}

}  // namespace quiller::value::detail
