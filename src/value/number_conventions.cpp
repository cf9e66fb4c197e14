// The regional conventions in force: constant-initialised en-US views, rebound to owned copies
// when the platform sets others. The generation tells caches of parsed pictures to start again.
#include <cstdint>

#include "value/format_picture.hpp"
#include "value/value.hpp"

namespace quiller::value {
namespace {

constinit NumberConventions current{};
std::uint32_t generation = 0;

// The texts `current` points into once conventions have been set.
struct OwnedTexts {
    std::string decimal, thousands, currency, currency_format, short_date, long_time, am, pm;
};

OwnedTexts& owned() {
    static OwnedTexts texts;
    return texts;
}

}  // namespace

const NumberConventions& conventions() {
    return current;
}

void set_conventions(const NumberConventions& c) {
    OwnedTexts copy{std::string(c.decimal),    std::string(c.thousands),
                    std::string(c.currency),   std::string(c.currency_format),
                    std::string(c.short_date), std::string(c.long_time),
                    std::string(c.am),         std::string(c.pm)};
    OwnedTexts& t = owned();
    t = std::move(copy);
    current = {t.decimal,    t.thousands, t.currency, t.currency_format,
               t.short_date, t.long_time, t.am,       t.pm};
    ++generation;
}

namespace detail {

std::uint32_t conventions_generation() {
    return generation;
}

}  // namespace detail
}  // namespace quiller::value
