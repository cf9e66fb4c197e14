// The system's conversions (oleaut32 with LCID 0x409, English, United States) and profile-string
// functions (the ANSI ones, as `readini` and `writeini` name them).
#include <windows.h>

#include <oleauto.h>  // after windows.h

#include <vector>

#include "differential.hpp"

namespace quiller::differential {
namespace {

constexpr LCID kEnUs = 0x409;

std::string narrow(const wchar_t* w, int size) {
    if (size <= 0) return {};
    const int n = WideCharToMultiByte(CP_UTF8, 0, w, size, nullptr, 0, nullptr, nullptr);
    std::string s(static_cast<std::size_t>(n), '\0');
    WideCharToMultiByte(CP_UTF8, 0, w, size, s.data(), n, nullptr, nullptr);
    return s;
}

// A variant of type `type` holding `v`, converted to text.
std::optional<std::string> as_text(double v, VARTYPE type) {
    VARIANT in;
    VARIANT out;
    VariantInit(&in);
    VariantInit(&out);
    in.vt = type;
    if (type == VT_DATE) {
        in.date = v;
    } else {
        in.dblVal = v;
    }
    if (FAILED(VariantChangeTypeEx(&out, &in, kEnUs, 0, VT_BSTR))) return std::nullopt;
    std::string text = narrow(out.bstrVal, static_cast<int>(SysStringLen(out.bstrVal)));
    VariantClear(&out);
    return text;
}

}  // namespace

std::wstring widen(std::string_view s) {
    if (s.empty()) return {};
    const int size = static_cast<int>(s.size());
    const int n = MultiByteToWideChar(CP_UTF8, 0, s.data(), size, nullptr, 0);
    std::wstring w(static_cast<std::size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, s.data(), size, w.data(), n);
    return w;
}

std::optional<double> system_number(std::string_view text) {
    std::wstring w = widen(text);  // the functions take a non-const pointer
    double v = 0;
    if (FAILED(VarR8FromStr(w.data(), kEnUs, 0, &v))) return std::nullopt;
    return v;
}

std::optional<double> system_date(std::string_view text) {
    std::wstring w = widen(text);  // the functions take a non-const pointer
    DATE d = 0;
    if (FAILED(VarDateFromStr(w.data(), kEnUs, 0, &d))) return std::nullopt;
    return d;
}

std::optional<std::string> system_number_text(double v) {
    return as_text(v, VT_R8);
}

std::optional<std::string> system_date_text(double serial) {
    return as_text(serial, VT_DATE);
}

std::optional<std::string> system_format(double v, std::string_view format, bool as_date) {
    std::wstring w = widen(format);  // the functions take a non-const pointer
    std::vector<BYTE> tokens(1024 + 16 * w.size());
    int used = 0;
    // First day of the week Sunday (1), first week the one of 1 January (1).
    if (FAILED(VarTokenizeFormatString(w.data(), tokens.data(), static_cast<int>(tokens.size()), 1,
                                       1, kEnUs, &used)))
        return std::nullopt;
    VARIANT in;
    VariantInit(&in);
    in.vt = as_date ? VT_DATE : VT_R8;
    if (as_date) {
        in.date = v;
    } else {
        in.dblVal = v;
    }
    BSTR out = nullptr;
    if (FAILED(VarFormatFromTokens(&in, w.data(), tokens.data(), 0, &out, kEnUs)))
        return std::nullopt;
    std::string text = narrow(out, static_cast<int>(SysStringLen(out)));
    SysFreeString(out);
    return text;
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

int system_current_year() {
    SYSTEMTIME t{};
    GetLocalTime(&t);
    return t.wYear;
}

}  // namespace quiller::differential
