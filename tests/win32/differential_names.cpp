// The name order of directory synchronisation against the system's case-blind comparison
// (CompareStringEx, invariant locale, NORM_IGNORECASE). Where the system holds two names equal
// that differ beyond case (ignorable characters, for instance), Quiller keeps them apart by
// design; every other disagreement is a difference.
#include <windows.h>

#include "differential.hpp"
#include "sync/name_order.hpp"
#include "value/text.hpp"

namespace quiller::differential {
namespace {

int sign(int v) {
    return (v > 0) - (v < 0);
}

int system_order(std::string_view a, std::string_view b) {
    const std::wstring wa = text::utf8_to_wide(a), wb = text::utf8_to_wide(b);
    const int r = CompareStringEx(LOCALE_NAME_INVARIANT, NORM_IGNORECASE, wa.data(),
                                  static_cast<int>(wa.size()), wb.data(),
                                  static_cast<int>(wb.size()), nullptr, nullptr, 0);
    return r - CSTR_EQUAL;
}

std::string order_text(int s) {
    return s < 0 ? "less" : s > 0 ? "greater" : "equal";
}

}  // namespace

void compare_names(const Grammar& g, Report& report) {
    std::vector<std::string> pairs = g.all("name-picked");
    Rng r(0x5CA11);
    for (int i = 0; i < 3000; ++i) pairs.push_back(g.expand("name-pair", r));
    for (int i = 0; i < 1000; ++i) {  // case pairs
        const std::string word = g.expand("name-word", r);
        pairs.push_back(word + "|" + (r.chance(50) ? text::to_upper(word) : text::to_lower(word)));
    }
    for (const std::string& pair : pairs) {
        const std::size_t bar = pair.find('|');
        const std::string a = pair.substr(0, bar), b = pair.substr(bar + 1);
        const int ours = sign(sync::compare_names(a, b));
        const int system = sign(system_order(a, b));
        const char* difference = nullptr;
        if (ours != system && !(system == 0 && sync::fold_name(a) != sync::fold_name(b)))
            difference = ours == 0 || system == 0 ? "equal" : "order";
        report.compare("name-order", difference, pair, order_text(ours), order_text(system));
    }
}

}  // namespace quiller::differential
