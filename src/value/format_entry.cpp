// The formatter's entry points and its cache of parsed pictures. Scripts use a handful of
// formats over and over, so the last few parsed ones are kept per thread: a hit costs one text
// comparison and the rendering allocates nothing beyond the result.
#include <array>
#include <cmath>
#include <cstdint>

#include "value/format.hpp"
#include "value/format_picture.hpp"
#include "value/value.hpp"

namespace quiller::value {
namespace detail {
namespace {

struct CacheSlot {
    std::string key;
    Picture picture;
    std::uint64_t used = 0;  // 0: never filled
};

struct PictureCache {
    std::array<CacheSlot, 8> slots;
    std::uint64_t clock = 0;
    std::size_t last = 0;
    std::uint32_t generation = 0;  // of the conventions the pictures were parsed with
};

thread_local PictureCache cache;

void apply_case(std::string& s, std::size_t from, TextCase c) {
    if (c == TextCase::Keep) return;
    for (std::size_t i = from; i < s.size(); ++i) {
        char& ch = s[i];
        if (c == TextCase::Lower && ch >= 'A' && ch <= 'Z') ch = static_cast<char>(ch + 32);
        if (c == TextCase::Upper && ch >= 'a' && ch <= 'z') ch = static_cast<char>(ch - 32);
    }
}

// "General Number": the general form with the regional decimal separator.
std::string general_number(double v) {
    std::string text = format_general_number(v);
    const std::string_view decimal = conventions().decimal;
    if (decimal == ".") return text;
    const std::size_t point = text.find('.');
    if (point != std::string::npos) text.replace(point, 1, decimal);
    return text;
}

void render_text(const Picture& p, double v, bool as_date, std::string& out) {
    for (const Token& t : p.tokens) {
        if (t.kind != Tok::Text) {
            out += p.text(t);
            continue;
        }
        const std::size_t from = out.size();
        out += as_date ? format_general_date(v) : format_general_number(v);
        apply_case(out, from, p.text_case);
    }
}

std::string render(const Picture& p, double v, bool as_date) {
    std::string out;
    switch (p.kind) {
        case PictureKind::Number:
            if (!std::isfinite(v)) return format_general_number(v);
            render_number(p, v, out);
            break;
        case PictureKind::Date:
            render_date(p, v, out);
            break;
        case PictureKind::Text:
            render_text(p, v, as_date, out);
            break;
        case PictureKind::GeneralNumber:
            return general_number(v);
        case PictureKind::GeneralDate:
            return general_date(v);
        case PictureKind::Boolean:
            return std::string(p.text(p.tokens[v != 0 ? 0 : 1]));
    }
    return out;
}

}  // namespace

const Picture& cached_picture(std::string_view format) {
    PictureCache& c = cache;
    if (c.generation != conventions_generation()) {
        for (CacheSlot& s : c.slots) s.used = 0;
        c.generation = conventions_generation();
    }
    ++c.clock;
    CacheSlot* slot = &c.slots[c.last];
    if (slot->used && slot->key == format) {
        slot->used = c.clock;
        return slot->picture;
    }
    CacheSlot* oldest = &c.slots[0];
    for (CacheSlot& s : c.slots) {
        if (s.used && s.key == format) {
            s.used = c.clock;
            c.last = static_cast<std::size_t>(&s - c.slots.data());
            return s.picture;
        }
        if (s.used < oldest->used) oldest = &s;
    }
    oldest->key.assign(format);
    oldest->picture = parse_picture(format);
    oldest->used = c.clock;
    c.last = static_cast<std::size_t>(oldest - c.slots.data());
    return oldest->picture;
}

}  // namespace detail

std::string format_number(double v, std::string_view format) {
    if (format.empty()) return format_general_number(v);
    return detail::render(detail::cached_picture(format), v, false);
}

std::string format_date(double serial, std::string_view format) {
    if (format.empty()) return format_general_date(serial);
    return detail::render(detail::cached_picture(format), serial, true);
}

}  // namespace quiller::value
