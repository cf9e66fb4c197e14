// Rendering of number pictures. The integer digits fill the integer placeholders from the right
// (digits beyond them go in front of the first one); "0" places show a zero where the number
// has no digit, "#" places show nothing. Fraction digits are rounded half away from zero. "."
// and "," write the decimal and thousands separators of the regional conventions.
#include <cmath>

#include "value/format_picture.hpp"
#include "value/value.hpp"

namespace quiller::value::detail {
namespace {

// The section a value uses, and whether a minus sign goes in front of everything: a negative
// value with no section of its own, which is what the platform writes ("-$1.00").
const NumberSection& choose_section(const Picture& p, double v, bool& minus) {
    minus = false;
    if (v < 0) {
        if (p.section_count >= 2 && p.sections[1].count > 0) return p.sections[1];
        minus = true;
    } else if (v == 0 && p.section_count >= 3 && p.sections[2].count > 0) {
        return p.sections[2];
    }
    return p.sections[0];
}

class SectionWriter {
  public:
    SectionWriter(const Picture& p, const NumberSection& s, DecimalForm d, std::string& out)
        : p_(p), s_(s), d_(d), out_(out), conventions_(conventions()) {}

    void run() {
        if (d_.count > 0) d_.point += 2 * s_.percent - 3 * s_.scale;
        if (s_.exponent) {
            prepare_exponent();
        } else {
            prepare_fixed();
        }
        for (std::uint32_t k = s_.first; k < s_.first + s_.count; ++k) write(p_.tokens[k]);
    }

  private:
    void prepare_fixed() {
        round_digits(d_, d_.point + s_.frac_places);
        const int int_digits = d_.count > 0 && d_.point > 0 ? d_.point : 0;
        int_shown_ = int_digits > s_.int_min ? int_digits : s_.int_min;
        int_pad_ = int_shown_ - int_digits;
        frac_start_ = d_.point;
        frac_shown_ = fraction_shown(d_.count - d_.point);
    }

    // All integer places are filled and the exponent makes up the rest. Zero counts as one
    // digit "0", as the platform writes it ("##0.0E+0" gives 000.0E-2).
    void prepare_exponent() {
        if (d_.count == 0) {
            d_.digits[0] = '0';
            d_.count = 1;
            d_.point = 1;
        }
        const int places = s_.int_places + s_.frac_places;
        round_digits(d_, places > 0 ? places : 1);
        exponent_ = d_.point - s_.int_places;
        int_shown_ = s_.int_places;
        int_pad_ = 0;
        frac_start_ = s_.int_places;
        frac_shown_ = fraction_shown(d_.count - s_.int_places);
    }

    // Fraction places shown: the significant ones, at least those up to the last "0".
    int fraction_shown(int significant) const {
        if (d_.count == 0) significant = 0;
        if (significant > s_.frac_places) significant = s_.frac_places;
        return significant > s_.frac_min ? significant : s_.frac_min;
    }

    void write(const Token& t) {
        switch (t.kind) {
            case Tok::Zero:
            case Tok::Hash:
                return in_fraction_ ? fraction_place() : integer_place();
            case Tok::Point:
                if (s_.int_places == 0) integer_digits(0, int_shown_);
                in_fraction_ = true;
                out_ += conventions_.decimal;
                return;
            case Tok::Percent:
                out_ += '%';
                return;
            case Tok::Exponent:
                return exponent(t);
            default:
                out_ += p_.text(t);
        }
    }

    void integer_place() {
        const int pos = int_shown_ - s_.int_places + int_place_;
        if (int_place_++ == 0) {
            integer_digits(0, pos + 1);
        } else if (pos >= 0) {
            integer_digits(pos, pos + 1);
        }
    }

    // Shown integer digits [from, to), with thousands separators when the section asks.
    void integer_digits(int from, int to) {
        for (int k = from; k < to; ++k) {
            out_ += k < int_pad_ ? '0' : d_.at(k - int_pad_);
            if (s_.grouping && !s_.exponent && k + 1 < int_shown_ && (int_shown_ - 1 - k) % 3 == 0)
                out_ += conventions_.thousands;
        }
    }

    void fraction_place() {
        if (frac_place_ < frac_shown_) out_ += d_.at(frac_start_ + frac_place_);
        ++frac_place_;
    }

    void exponent(const Token& t) {
        out_ += (t.n & kExpUpper) ? 'E' : 'e';
        if (exponent_ < 0) {
            out_ += '-';
        } else if (t.n & kExpPlus) {
            out_ += '+';
        }
        char buf[12];
        int n = 0;
        int e = exponent_ < 0 ? -exponent_ : exponent_;
        do {
            buf[n++] = static_cast<char>('0' + e % 10);
            e /= 10;
        } while (e > 0);
        for (int k = n; k < static_cast<int>(t.len); ++k) out_ += '0';
        while (n > 0) out_ += buf[--n];
    }

    const Picture& p_;
    const NumberSection& s_;
    DecimalForm d_;
    std::string& out_;
    const NumberConventions& conventions_;
    bool in_fraction_ = false;
    int int_shown_ = 0, int_pad_ = 0, int_place_ = 0;
    int frac_start_ = 0, frac_shown_ = 0, frac_place_ = 0;
    int exponent_ = 0;
};

}  // namespace

void render_number(const Picture& p, double v, std::string& out) {
    bool minus = false;
    const NumberSection& s = choose_section(p, v, minus);
    if (minus) out += '-';
    SectionWriter(p, s, decimal_form(v), out).run();
}

}  // namespace quiller::value::detail
