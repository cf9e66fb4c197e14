// Parsing of format texts: named formats first, then the picture is told apart as a number,
// date/time or text picture by the placeholders it holds.
#include "value/ascii_class.hpp"
#include "value/format_picture.hpp"

namespace quiller::value::detail {
namespace {

enum class Kind { Number, Date, Text };

// True when a date/time token starts at `s[i]`.
bool date_token_at(std::string_view s, std::size_t i) {
    const char c = lower(s[i]);
    if (std::string_view("dwmqyhnsc").find(c) != std::string_view::npos) return true;
    if (c == 't') return starts_with_blind(s, i, "ttttt");
    return c == 'a' && (starts_with_blind(s, i, "am/pm") || starts_with_blind(s, i, "ampm") ||
                        starts_with_blind(s, i, "a/p"));
}

// Digit placeholders anywhere make a number picture; otherwise a date/time token makes a date
// picture, and "@" or "&" a text picture. Text with none of them is written as it stands.
Kind classify(std::string_view s) {
    bool date = false, text = false;
    for (std::size_t i = 0; i < s.size();) {
        const char c = s[i];
        if (c == '"') {
            std::size_t close = s.find('"', i + 1);
            i = close == std::string_view::npos ? s.size() : close + 1;
        } else if (c == '\\') {
            i += 2;
        } else if (c == '0' || c == '#') {
            return Kind::Number;
        } else {
            date = date || date_token_at(s, i);
            text = text || c == '@' || c == '&';
            ++i;
        }
    }
    return date ? Kind::Date : text ? Kind::Text : Kind::Number;
}

// A text picture: the value's general text at the first "@"/"&" run, "<" and ">" for case.
Picture parse_text_picture(std::string_view s) {
    Picture p;
    p.kind = PictureKind::Text;
    bool placed = false;
    for (std::size_t i = 0; i < s.size();) {
        if (read_literal(s, i, p)) continue;
        const char c = s[i++];
        if (c == '@' || c == '&') {
            if (!placed) p.add(Tok::Text);
            placed = true;
        } else if (c == '<' || c == '>') {
            p.text_case = c == '<' ? TextCase::Lower : TextCase::Upper;
        } else if (c != '!') {
            p.add_literal({&c, 1});
        }
    }
    p.section_count = 1;
    return p;
}

}  // namespace

void Picture::add_literal(std::string_view s) {
    if (s.empty()) return;
    if (tokens.size() > sealed && tokens.back().kind == Tok::Literal &&
        tokens.back().off + tokens.back().len == pool.size()) {
        tokens.back().len += static_cast<std::uint32_t>(s.size());
    } else {
        tokens.push_back(Token{Tok::Literal, 0, static_cast<std::uint32_t>(pool.size()),
                               static_cast<std::uint32_t>(s.size())});
    }
    pool.append(s);
}

bool read_literal(std::string_view s, std::size_t& i, Picture& p) {
    if (s[i] == '\\') {
        if (i + 1 < s.size()) p.add_literal(s.substr(i + 1, 1));
        i += 2;
        return true;
    }
    if (s[i] != '"') return false;
    std::size_t close = s.find('"', i + 1);
    if (close == std::string_view::npos) close = s.size();
    p.add_literal(s.substr(i + 1, close - i - 1));
    i = close + 1;
    return true;
}

Picture parse_picture(std::string_view format) {
    Picture p;
    if (parse_named(format, p)) return p;
    switch (classify(format)) {
        case Kind::Date:
            return parse_date_picture(format);
        case Kind::Text:
            return parse_text_picture(format);
        default:
            return parse_number_picture(format);
    }
}

}  // namespace quiller::value::detail
