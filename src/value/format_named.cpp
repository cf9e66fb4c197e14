// Named formats, matched without regard to case. Most stand for a picture: "Currency", "Short
// Date" and "Long Time" for the regional conventions' ones, the others for en-US's. The general
// forms and the yes/no kinds have their own rendering.
#include "value/ascii_class.hpp"
#include "value/format_picture.hpp"
#include "value/value.hpp"

namespace quiller::value::detail {
namespace {

struct Named {
    std::string_view name;
    PictureKind kind;
    std::string_view picture;  // Boolean: the texts for non-zero and zero, split at "/"
    std::string_view NumberConventions::*regional = nullptr;  // the conventions' picture
};

constexpr Named kNamed[] = {
    {"general date", PictureKind::GeneralDate, {}},
    {"long date", PictureKind::Date, "dddd, mmmm d, yyyy"},
    {"medium date", PictureKind::Date, "dd-mmm-yy"},
    {"short date", PictureKind::Date, {}, &NumberConventions::short_date},
    {"long time", PictureKind::Date, {}, &NumberConventions::long_time},
    {"medium time", PictureKind::Date, "hh:mm AM/PM"},
    {"short time", PictureKind::Date, "hh:mm"},
    {"general number", PictureKind::GeneralNumber, {}},
    {"currency", PictureKind::Number, {}, &NumberConventions::currency_format},
    {"fixed", PictureKind::Number, "0.00"},
    {"standard", PictureKind::Number, "#,##0.00"},
    {"percent", PictureKind::Number, "0.00%"},
    {"scientific", PictureKind::Number, "0.00E+00"},
    {"yes/no", PictureKind::Boolean, "Yes/No"},
    {"true/false", PictureKind::Boolean, "True/False"},
    {"on/off", PictureKind::Boolean, "On/Off"},
};

bool equals_blind(std::string_view text, std::string_view lower_name) {
    if (text.size() != lower_name.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (lower(text[i]) != lower_name[i]) return false;
    return true;
}

Picture boolean_picture(std::string_view texts) {
    Picture p;
    p.kind = PictureKind::Boolean;
    p.pool = texts;
    const auto slash = static_cast<std::uint32_t>(texts.find('/'));
    const auto size = static_cast<std::uint32_t>(texts.size());
    p.tokens = {Token{Tok::Literal, 0, 0, slash},
                Token{Tok::Literal, 0, slash + 1, size - slash - 1}};
    return p;
}

}  // namespace

bool parse_named(std::string_view format, Picture& out) {
    if (format.size() < 5 || format.size() > 14) return false;  // the shortest and longest names
    for (const Named& n : kNamed) {
        if (!equals_blind(format, n.name)) continue;
        const std::string_view picture = n.regional ? conventions().*n.regional : n.picture;
        switch (n.kind) {
            case PictureKind::Date:
                out = parse_date_picture(picture);
                break;
            case PictureKind::Number:
                out = parse_number_picture(picture);
                break;
            case PictureKind::Boolean:
                out = boolean_picture(n.picture);
                break;
            default:
                out = Picture{};
                out.kind = n.kind;
        }
        return true;
    }
    return false;
}

}  // namespace quiller::value::detail
