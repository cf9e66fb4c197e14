#include "hosts/win32/file_association.hpp"

#include <windows.h>
// after windows.h
#include <shlobj.h>

namespace quiller::win32 {
namespace {

const std::wstring kClasses = L"Software\\Classes\\";

long set_string(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    HKEY h = nullptr;
    LONG r = RegCreateKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                             &h, nullptr);
    if (r != ERROR_SUCCESS) return r;
    r = RegSetValueExW(h, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                       static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(h);
    return r;
}

std::wstring get_string(const std::wstring& key, const wchar_t* name) {
    wchar_t buffer[512] = {};
    DWORD size = sizeof buffer - sizeof(wchar_t);
    if (RegGetValueW(HKEY_CURRENT_USER, key.c_str(), name, RRF_RT_REG_SZ, nullptr, buffer, &size) !=
        ERROR_SUCCESS)
        return {};
    return buffer;
}

}  // namespace

long register_prg_association(const std::wstring& exe) {
    const std::wstring prog = kClasses + kProgId;
    const std::wstring quoted = L"\"" + exe + L"\"";
    const struct {
        std::wstring key;
        const wchar_t* name;
        std::wstring value;
    } values[] = {
        {kClasses + L".prg", nullptr, kProgId},
        {prog, nullptr, L"Quiller script"},
        {prog + L"\\DefaultIcon", nullptr, quoted + L",0"},
        {prog + L"\\shell", nullptr, L"open"},
        {prog + L"\\shell\\open\\command", nullptr, quoted + L" \"%1\" %*"},
        {prog + L"\\shell\\edit\\command", nullptr, L"notepad.exe \"%1\""},
    };
    for (const auto& v : values)
        if (const long r = set_string(v.key, v.name, v.value)) return r;
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
    return 0;
}

long unregister_prg_association() {
    const std::wstring ext = kClasses + L".prg";
    if (get_string(ext, nullptr) == kProgId) {
        HKEY h = nullptr;
        if (RegOpenKeyExW(HKEY_CURRENT_USER, ext.c_str(), 0, KEY_SET_VALUE, &h) == ERROR_SUCCESS) {
            RegDeleteValueW(h, nullptr);
            RegCloseKey(h);
        }
        RegDeleteKeyW(HKEY_CURRENT_USER, ext.c_str());  // only when nothing else is kept there
    }
    const long r = RegDeleteTreeW(HKEY_CURRENT_USER, (kClasses + kProgId).c_str());
    SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
    return r == ERROR_FILE_NOT_FOUND ? 0 : r;
}

}  // namespace quiller::win32
