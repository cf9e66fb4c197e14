// The system's conversions (oleaut32 with LCID 0x409, English, United States) and profile-string
// functions (the ANSI ones, as `readini` and `writeini` name them).
#include <windows.h>

#include <oleauto.h>  // after windows.h

#include <vector>

#include "differential.hpp"
#include "value/text.hpp"

namespace quiller::differential {
namespace {

constexpr LCID kEnUs = 0x409;

VARIANT variant_of(double v, bool as_date) {
    VARIANT in;
    VariantInit(&in);
    in.vt = as_date ? VT_DATE : VT_R8;
    if (as_date) {
        in.date = v;
    } else {
        in.dblVal = v;
    }
    return in;
}

// Takes the string and frees it.
std::string utf8_of(BSTR s) {
    std::string text = text::wide_to_utf8({s, SysStringLen(s)});
    SysFreeString(s);
    return text;
}

std::optional<std::string> as_text(double v, bool as_date) {
    VARIANT in = variant_of(v, as_date);
    VARIANT out;
    VariantInit(&out);
    if (FAILED(VariantChangeTypeEx(&out, &in, kEnUs, 0, VT_BSTR))) return std::nullopt;
    return utf8_of(out.bstrVal);
}

}  // namespace

std::optional<double> system_number(std::string_view text) {
    std::wstring w = text::utf8_to_wide(text);  // the functions take a non-const pointer
    double v = 0;
    if (FAILED(VarR8FromStr(w.data(), kEnUs, 0, &v))) return std::nullopt;
    return v;
}

std::optional<double> system_date(std::string_view text) {
    std::wstring w = text::utf8_to_wide(text);
    DATE d = 0;
    if (FAILED(VarDateFromStr(w.data(), kEnUs, 0, &d))) return std::nullopt;
    return d;
}

std::optional<std::string> system_number_text(double v) {
    return as_text(v, false);
}

std::optional<std::string> system_date_text(double serial) {
    return as_text(serial, true);
}

std::optional<std::string> system_format(double v, std::string_view format, bool as_date) {
    std::wstring w = text::utf8_to_wide(format);
    std::vector<BYTE> tokens(1024 + 16 * w.size());
    int used = 0;
    // First day of the week Sunday (1), first week the one of 1 January (1).
    if (FAILED(VarTokenizeFormatString(w.data(), tokens.data(), static_cast<int>(tokens.size()), 1,
                                       1, kEnUs, &used)))
        return std::nullopt;
    VARIANT in = variant_of(v, as_date);
    BSTR out = nullptr;
    if (FAILED(VarFormatFromTokens(&in, w.data(), tokens.data(), 0, &out, kEnUs)))
        return std::nullopt;
    return utf8_of(out);
}

std::string system_profile_string(const std::string& path, const std::string& section,
                                  const std::string& key, const std::string& fallback) {
    char buffer[255] = {};
    GetPrivateProfileStringA(section.c_str(), key.c_str(), fallback.c_str(), buffer, sizeof buffer,
                             path.c_str());
    return buffer;
}

bool system_write_profile(const std::string& path, const std::string& section,
                          const std::string& key, const std::optional<std::string>& value) {
    const char* k = key.empty() ? nullptr : key.c_str();
    const char* v = value ? value->c_str() : nullptr;
    const bool ok = WritePrivateProfileStringA(section.c_str(), k, v, path.c_str()) != 0;
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, path.c_str());  // flush any cache
    return ok;
}

int system_name_order(std::string_view a, std::string_view b) {
    const std::wstring wa = text::utf8_to_wide(a), wb = text::utf8_to_wide(b);
    return CompareStringEx(LOCALE_NAME_INVARIANT, NORM_IGNORECASE, wa.data(),
                           static_cast<int>(wa.size()), wb.data(), static_cast<int>(wb.size()),
                           nullptr, nullptr, 0) -
           CSTR_EQUAL;
}

int system_current_year() {
    SYSTEMTIME t{};
    GetLocalTime(&t);
    return t.wYear;
}

}  // namespace quiller::differential
