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

}  // namespace quiller::sync::platform
#endif
