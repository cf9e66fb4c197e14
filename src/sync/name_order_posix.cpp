// The name order on POSIX: ICU's root collation at secondary strength (case-blind, accents
// count), simple case folding from ICU's character properties.
#ifndef _WIN32
#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/ustring.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "sync/name_order_platform.hpp"

namespace quiller::sync::platform {
namespace {

const UCollator* collator() {
    static UCollator* const shared = [] {
        UErrorCode status = U_ZERO_ERROR;
        UCollator* c = ucol_open("", &status);
        if (U_FAILURE(status)) throw std::runtime_error("ICU collation is not available");
        ucol_setStrength(c, UCOL_SECONDARY);
        return c;
    }();
    return shared;
}

void append_icu_key(std::string_view folded, std::string& key) {
    thread_local std::vector<UChar> utf16;
    thread_local std::vector<std::uint8_t> bytes(256);
    utf16.resize(folded.size() + 1);
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t units = 0;
    u_strFromUTF8WithSub(utf16.data(), static_cast<std::int32_t>(utf16.size()), &units,
                         folded.data(), static_cast<std::int32_t>(folded.size()), 0xFFFD, nullptr,
                         &status);
    if (U_FAILURE(status)) units = 0;
    std::int32_t n = ucol_getSortKey(collator(), utf16.data(), units, bytes.data(),
                                     static_cast<std::int32_t>(bytes.size()));
    if (n > static_cast<std::int32_t>(bytes.size())) {
        bytes.resize(static_cast<std::size_t>(n));
        n = ucol_getSortKey(collator(), utf16.data(), units, bytes.data(), n);
    }
    if (n > 0) --n;  // the terminating zero byte
    key.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(n));
}

std::string icu_key(std::string_view folded) {
    std::string key;
    append_icu_key(folded, key);
    return key;
}

// ICU's key of printable ASCII text is the primary weights of its characters one after another,
// then the level separator and the common secondary weights, whose bytes depend on the length
// only. The table holds both, taken from ICU itself, and is used only when it reproduces ICU's
// keys for every pair of characters and for a set of longer names.
class AsciiKeys {
  public:
    static constexpr std::size_t kLongest = 400;

    AsciiKeys() {
        for (char c = 0x20; c < 0x7F; ++c) {
            const std::string key = icu_key(std::string(1, fold(c)));
            const std::size_t length = key.find('\x01');
            if (length == 0 || length > sizeof(Weight::bytes)) return;  // not as expected
            Weight& w = primary_[index(c)];
            w.length = static_cast<std::uint8_t>(length);
            key.copy(w.bytes, length);
        }
        std::string text;
        for (std::size_t n = 1; n <= kLongest; ++n) {
            text += 'a';
            tails_[n] = icu_key(text).substr(primary_[index('a')].length * n);
        }
        usable_ = reproduces_icu();
    }

    // False when `folded` is not printable ASCII of a length the table covers.
    bool append(std::string_view folded, std::string& key) const {
        if (!usable_ || folded.empty() || folded.size() > kLongest) return false;
        for (const char c : folded)
            if (c < 0x20 || c > 0x7E) return false;
        char buffer[kLongest * sizeof(Weight::bytes)];
        std::size_t n = 0;
        for (const char c : folded) {
            const Weight& w = primary_[index(c)];
            for (std::uint8_t k = 0; k < w.length; ++k) buffer[n++] = w.bytes[k];
        }
        key.append(buffer, n);
        key += tails_[folded.size()];
        return true;
    }

  private:
    static std::size_t index(char c) { return static_cast<std::size_t>(c - 0x20); }
    static char fold(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 32) : c; }

    bool reproduces_icu() {
        usable_ = true;
        std::string text, key;
        const auto same = [&] {
            key.clear();
            return append(text, key) && key == icu_key(text);
        };
        for (char a = 0x20; a < 0x7F; ++a)
            for (char b = 0x20; b < 0x7F; ++b) {
                text = {fold(a), fold(b)};
                if (!same()) return false;
            }
        std::uint32_t seed = 12345;
        for (int i = 0; i < 500; ++i) {
            text.clear();
            const std::size_t length = 1 + i % 80;
            for (std::size_t k = 0; k < length; ++k) {
                seed = seed * 1103515245 + 12345;
                text += fold(static_cast<char>(0x20 + (seed >> 16) % 95));
            }
            if (!same()) return false;
        }
        return true;
    }

    struct Weight {
        std::uint8_t length = 0;
        char bytes[3] = {};
    };
    Weight primary_[95];
    std::string tails_[kLongest + 1];
    bool usable_ = false;
};

}  // namespace

void append_folded(std::string_view name, std::string& out) {
    const auto* s = reinterpret_cast<const std::uint8_t*>(name.data());
    const auto length = static_cast<std::int32_t>(name.size());
    std::int32_t i = 0;
    while (i < length) {
        const std::int32_t start = i;
        UChar32 c;
        U8_NEXT(s, i, length, c);
        if (c < 0) {  // ill-formed: the bytes as they are
            out.append(name.data() + start, static_cast<std::size_t>(i - start));
            continue;
        }
        c = u_foldCase(c, U_FOLD_CASE_DEFAULT);
        char buffer[U8_MAX_LENGTH];
        std::int32_t n = 0;
        U8_APPEND_UNSAFE(buffer, n, c);
        out.append(buffer, static_cast<std::size_t>(n));
    }
}

void append_collation_key(std::string_view folded, std::string& key) {
    static const AsciiKeys ascii;
    if (!ascii.append(folded, key)) append_icu_key(folded, key);
}

}  // namespace quiller::sync::platform
#endif
