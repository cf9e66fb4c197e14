// Number pictures: up to four ";" sections (positive; negative; zero; the fourth is never used),
// each a run of 0 # . , % E+ E- tokens and literal text.
#include "value/format_picture.hpp"

namespace quiller::value::detail {
namespace {

bool is_placeholder(char c) {
    return c == '0' || c == '#';
}

class SectionScanner {
  public:
    SectionScanner(std::string_view s, std::size_t& i, Picture& p, NumberSection& sec)
        : s_(s), i_(i), p_(p), sec_(sec) {}

    void run() {
        sec_.first = static_cast<std::uint32_t>(p_.tokens.size());
        p_.sealed = p_.tokens.size();
        while (i_ < s_.size() && s_[i_] != ';') step();
        sec_.count = static_cast<std::uint32_t>(p_.tokens.size()) - sec_.first;
        sec_.int_min = first_int_zero_ < 0 ? 0 : sec_.int_places - first_int_zero_;
        sec_.frac_min = last_frac_zero_ + 1;
    }

  private:
    bool in_integer() const { return !in_fraction_ && !sec_.exponent; }

    void step() {
        if (read_literal(s_, i_, p_)) return;
        const char c = s_[i_];
        if (is_placeholder(c) && !sec_.exponent) return placeholder(c);
        if (c == '.' && in_integer()) {
            in_fraction_ = true;
            p_.add(Tok::Point);
        } else if (c == ',' && !sec_.exponent && sec_.int_places + sec_.frac_places > 0) {
            return commas();
        } else if (c == '%') {
            ++sec_.percent;
            p_.add(Tok::Percent);
        } else if ((c == 'E' || c == 'e') && exponent_follows()) {
            return exponent(c);
        } else {
            p_.add_literal({&c, 1});
        }
        ++i_;
    }

    void placeholder(char c) {
        p_.add(c == '0' ? Tok::Zero : Tok::Hash);
        if (in_fraction_) {
            if (c == '0') last_frac_zero_ = sec_.frac_places;
            ++sec_.frac_places;
        } else {
            if (c == '0' && first_int_zero_ < 0) first_int_zero_ = sec_.int_places;
            ++sec_.int_places;
        }
        ++i_;
    }

    // Between integer placeholders a comma asks for thousands separators; right of the last
    // placeholder, each comma divides by a thousand. Commas between fraction places are text.
    void commas() {
        std::size_t end = i_;
        while (end < s_.size() && s_[end] == ',') ++end;
        const bool between = end < s_.size() && is_placeholder(s_[end]);
        if (between && !in_fraction_) {
            sec_.grouping = true;
        } else if (between) {
            p_.add_literal(s_.substr(i_, end - i_));
        } else {
            sec_.scale += static_cast<int>(end - i_);
        }
        i_ = end;
    }

    bool exponent_follows() const {
        return !sec_.exponent && i_ + 2 < s_.size() && (s_[i_ + 1] == '+' || s_[i_ + 1] == '-') &&
               is_placeholder(s_[i_ + 2]);
    }

    void exponent(char c) {
        Token t{Tok::Exponent, 0, 0, 0};
        if (c == 'E') t.n |= kExpUpper;
        if (s_[i_ + 1] == '+') t.n |= kExpPlus;
        i_ += 2;
        std::uint32_t zeros = 0;
        for (; i_ < s_.size() && is_placeholder(s_[i_]); ++i_) zeros += s_[i_] == '0';
        t.len = zeros == 0 ? 1 : zeros;
        p_.tokens.push_back(t);
        sec_.exponent = true;
    }

    std::string_view s_;
    std::size_t& i_;
    Picture& p_;
    NumberSection& sec_;
    bool in_fraction_ = false;
    int first_int_zero_ = -1;
    int last_frac_zero_ = -1;
};

}  // namespace

Picture parse_number_picture(std::string_view s) {
    Picture p;
    p.kind = PictureKind::Number;
    std::size_t i = 0;
    for (int k = 0;; ++k) {
        SectionScanner(s, i, p, p.sections[k]).run();
        p.section_count = k + 1;
        if (i >= s.size() || k == 2) break;
        ++i;  // the ";"
    }
    return p;
}

}  // namespace quiller::value::detail
