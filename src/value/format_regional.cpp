// The regional parts of dates: "ddddd", "ttttt", "c" and "General Date". With en-US's
// conventions the fixed fast forms are written; otherwise the conventions' short-date and
// long-time pictures, parsed once per thread and change of conventions.
#include "value/format_picture.hpp"
#include "value/value.hpp"

namespace quiller::value::detail {
namespace {

struct Regional {
    std::uint32_t generation = ~std::uint32_t{0};
    bool en_us = true;
    Picture short_date, long_time;
};

thread_local Regional regional;

// A date picture that does not use the regional parts itself (so rendering it can't recurse);
// en-US's when the conventions' one does.
Picture plain_picture(std::string_view format, std::string_view fallback) {
    Picture p = parse_date_picture(format);
    for (const Token& t : p.tokens) {
        if (t.kind == Tok::ShortDate || t.kind == Tok::LongTime || t.kind == Tok::GeneralDate)
            return parse_date_picture(fallback);
    }
    return p;
}

const Regional& current() {
    if (regional.generation == conventions_generation()) return regional;
    const NumberConventions& c = conventions();
    const NumberConventions en_us;
    regional.en_us = c.short_date == en_us.short_date && c.long_time == en_us.long_time &&
                     c.am == en_us.am && c.pm == en_us.pm;
    regional.short_date = plain_picture(c.short_date, en_us.short_date);
    regional.long_time = plain_picture(c.long_time, en_us.long_time);
    regional.generation = conventions_generation();
    return regional;
}

}  // namespace

const Picture* regional_short_date() {
    const Regional& r = current();
    return r.en_us ? nullptr : &r.short_date;
}

const Picture* regional_long_time() {
    const Regional& r = current();
    return r.en_us ? nullptr : &r.long_time;
}

std::string general_date(double serial) {
    const Regional& r = current();
    if (r.en_us) return format_general_date(serial);
    const DateParts d = split_date(serial);
    const bool has_date = !(d.year == 1899 && d.month == 12 && d.day == 30);
    const bool has_time = d.hour || d.minute || d.second;
    std::string out;
    if (has_date) render_date(r.short_date, serial, out);
    if (has_date && has_time) out += ' ';
    if (has_time || !has_date) render_date(r.long_time, serial, out);
    return out;
}

}  // namespace quiller::value::detail
