// The key-text parser of `sendkeys`. Named keys carry Windows virtual-key codes, which the Win32
// backend hands to SendInput as they are.
#include "os/network_keys.hpp"

#include <algorithm>
#include <utility>

#include "value/text.hpp"

namespace quiller {
namespace {

struct NamedKey {
    std::string_view name;
    std::uint16_t code;
};

constexpr NamedKey kNamedKeys[] = {
    {"backspace", 0x08}, {"bs", 0x08},     {"bksp", 0x08},    {"break", 0x03},
    {"capslock", 0x14},  {"clear", 0x0C},  {"delete", 0x2E},  {"del", 0x2E},
    {"down", 0x28},      {"end", 0x23},    {"enter", 0x0D},   {"esc", 0x1B},
    {"escape", 0x1B},    {"help", 0x2F},   {"home", 0x24},    {"insert", 0x2D},
    {"ins", 0x2D},       {"left", 0x25},   {"numlock", 0x90}, {"pgdn", 0x22},
    {"pgup", 0x21},      {"prtsc", 0x2C},  {"right", 0x27},   {"scrolllock", 0x91},
    {"tab", 0x09},       {"up", 0x26},     {"add", 0x6B},     {"subtract", 0x6D},
    {"multiply", 0x6A},  {"divide", 0x6F},
};

constexpr std::uint16_t kVkEnter = 0x0D;
constexpr std::uint16_t kVkF1 = 0x70;
constexpr int kMaxGroupDepth = 32;

// One code point of UTF-8 text at `pos`; an ill-formed byte reads as U+FFFD.
char32_t next_char(std::string_view s, std::size_t& pos) {
    const auto b = static_cast<unsigned char>(s[pos++]);
    if (b < 0x80) return b;
    const int extra = b >= 0xF0 ? 3 : b >= 0xE0 ? 2 : b >= 0xC0 ? 1 : -1;
    if (extra < 0 || pos + extra > s.size()) return 0xFFFD;
    char32_t c = b & (0x3F >> extra);
    for (int i = 0; i < extra; ++i) {
        const auto t = static_cast<unsigned char>(s[pos + i]);
        if ((t & 0xC0) != 0x80) return 0xFFFD;
        c = (c << 6) | (t & 0x3F);
    }
    pos += extra;
    return c;
}

std::uint8_t modifier_of(char c) {
    switch (c) {
        case '+':
            return kKeyShift;
        case '^':
            return kKeyControl;
        case '%':
            return kKeyAlt;
        default:
            return 0;
    }
}

class KeyParser {
  public:
    explicit KeyParser(std::string_view text) : text_(text) {}

    KeyParse run() {
        sequence(0, false);
        if (!error_.empty()) keys_.clear();
        return {std::move(keys_), std::move(error_)};
    }

  private:
    // Keys up to the end of the text, or up to the ")" that closes a group.
    void sequence(std::uint8_t held, bool in_group) {
        std::uint8_t pending = 0;
        while (pos_ < text_.size() && error_.empty()) {
            const char c = text_[pos_];
            if (const std::uint8_t m = modifier_of(c)) {
                pending |= m;
                ++pos_;
            } else if (c == ')') {
                if (!in_group) return fail("')' without its '('");
                if (pending) return fail("Modifier without a key");
                ++pos_;
                return;
            } else {
                item(held | pending);
                pending = 0;
            }
        }
        if (!error_.empty()) return;
        if (pending) return fail("Modifier without a key");
        if (in_group) fail("'(' without its ')'");
    }

    void item(std::uint8_t modifiers) {
        const char c = text_[pos_];
        if (c == '(') {
            if (++depth_ > kMaxGroupDepth) return fail("Groups nested too deep");
            ++pos_;
            sequence(modifiers, true);
            --depth_;
        } else if (c == '{') {
            braces(modifiers);
        } else if (c == '~') {
            ++pos_;
            keys_.push_back({0, kVkEnter, modifiers});
        } else {
            keys_.push_back({next_char(text_, pos_), 0, modifiers});
        }
    }

    // "{NAME}" or "{NAME COUNT}"; the name may be "}" itself, so the closing brace is looked for
    // from the second character on.
    void braces(std::uint8_t modifiers) {
        const std::size_t close = text_.find('}', pos_ + 2);
        if (pos_ + 1 >= text_.size() || close == std::string_view::npos)
            return fail("'{' without its '}'");
        const std::string_view inside = text_.substr(pos_ + 1, close - pos_ - 1);
        pos_ = close + 1;
        std::string_view name = inside;
        int count = 1;
        const std::size_t blank = inside.rfind(' ');
        if (blank != std::string_view::npos && blank > 0) {
            name = inside.substr(0, blank);
            if (!read_count(inside.substr(blank + 1), count)) return;
        }
        KeyStroke key{0, 0, modifiers};
        std::size_t at = 0;
        const char32_t ch = next_char(name, at);
        if (at == name.size()) {
            key.character = ch;
        } else if (!(key.virtual_key = named_key(name))) {
            return fail("Unknown key {" + std::string(name) + "}");
        }
        keys_.insert(keys_.end(), count, key);
    }

    bool read_count(std::string_view digits, int& count) {
        count = 0;
        const bool ok = !digits.empty() && std::all_of(digits.begin(), digits.end(), [&](char d) {
            if (d < '0' || d > '9') return false;
            count = std::min(count * 10 + (d - '0'), kMaxKeyRepeat + 1);
            return true;
        });
        if (ok && count <= kMaxKeyRepeat) return true;
        fail("Repeat count '" + std::string(digits) + "' is not 0 to " +
             std::to_string(kMaxKeyRepeat));
        return false;
    }

    void fail(std::string what) {
        if (error_.empty()) error_ = what + " in '" + std::string(text_) + "'";
    }

    std::string_view text_;
    std::size_t pos_ = 0;
    int depth_ = 0;
    std::vector<KeyStroke> keys_;
    std::string error_;
};

}  // namespace

std::uint16_t named_key(std::string_view name) {
    const std::string lower = text::ascii_lower(name);
    for (const NamedKey& k : kNamedKeys)
        if (k.name == lower) return k.code;
    // F1 to F24.
    if (lower.size() >= 2 && lower.size() <= 3 && lower[0] == 'f') {
        int n = 0;
        for (char d : lower.substr(1)) {
            if (d < '0' || d > '9') return 0;
            n = n * 10 + (d - '0');
        }
        if (n >= 1 && n <= 24) return static_cast<std::uint16_t>(kVkF1 + n - 1);
    }
    return 0;
}

KeyParse parse_keys(std::string_view text) {
    return KeyParser(text).run();
}

}  // namespace quiller
