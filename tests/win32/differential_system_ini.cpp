// The system's profile-string functions (the ANSI ones, as `readini` and `writeini` name them).
#include <windows.h>

#include "differential.hpp"

namespace quiller::differential {

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

}  // namespace quiller::differential
