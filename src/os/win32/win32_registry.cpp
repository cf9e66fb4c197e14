// The registry store of Windows builds: the system's registry through the wide functions, on this
// machine or, after connect(), on another one. Names and texts are UTF-8 in the engine.
//
// When QUILLER_REGISTRY names a file, the store is that private file instead (an application
// hive, whose subkeys HKEY_CURRENT_USER ... stand for the roots), so tests never touch the
// user's registry. Wine only pretends to load application hives: under Wine such a store is kept
// in memory.
#include <algorithm>
#include <map>
#include <vector>

#include "value/text.hpp"
#include "os/registry_path.hpp"
#include "os/registry_store.hpp"
#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

// A registry key handle; closed on destruction.
class KeyHandle {
  public:
    KeyHandle() = default;
    KeyHandle(const KeyHandle&) = delete;
    KeyHandle& operator=(const KeyHandle&) = delete;
    ~KeyHandle() {
        if (h_) RegCloseKey(h_);
    }
    HKEY* out() { return &h_; }
    HKEY get() const { return h_; }

  private:
    HKEY h_ = nullptr;
};

HKEY root_handle(RegistryRoot root) {
    return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<std::uint32_t>(root)));
}

std::wstring subkey_text(std::string_view subkey) {
    if (subkey.ends_with('\\')) subkey.remove_suffix(1);
    return widen(subkey);
}

bool is_text(std::uint32_t type) {
    return type == reg_type::kSz || type == reg_type::kExpandSz || type == reg_type::kMultiSz;
}

// The stored bytes of a value: text types in UTF-16 with their closing NULs.
std::string stored_bytes(const RegistryData& data) {
    if (!is_text(data.type)) return data.bytes;
    std::wstring w = widen(data.bytes);
    w.push_back(L'\0');
    if (data.type == reg_type::kMultiSz) w.push_back(L'\0');
    return std::string(reinterpret_cast<const char*>(w.data()), w.size() * sizeof(wchar_t));
}

// The engine's form of stored bytes: text types as UTF-8 without closing NULs.
std::string engine_bytes(DWORD type, const std::string& raw) {
    if (!is_text(type)) return raw;
    std::wstring w(raw.size() / sizeof(wchar_t), L'\0');
    std::copy(raw.data(), raw.data() + w.size() * sizeof(wchar_t),
              reinterpret_cast<char*>(w.data()));
    if (type == reg_type::kMultiSz) {
        while (!w.empty() && w.back() == L'\0') w.pop_back();
    } else {
        w.erase(std::min(w.find(L'\0'), w.size()));
    }
    return narrow(w);
}

// True under Wine, whose ntdll has a function of its own to tell its version.
bool running_under_wine() {
    const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    return ntdll && GetProcAddress(ntdll, "wine_get_version") != nullptr;
}

bool ordinal_less(const std::wstring& a, const std::wstring& b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                                static_cast<int>(b.size()), TRUE) == CSTR_LESS_THAN;
}

// A key path the registry editor could make: names of 1 to 255 characters.
bool valid_names(std::string_view subkey) {
    std::vector<std::string_view> names;
    return split_subkey(subkey, names);
}

const wchar_t* root_name(RegistryRoot root) {
    switch (root) {
        case RegistryRoot::ClassesRoot:
            return L"HKEY_CLASSES_ROOT";
        case RegistryRoot::CurrentUser:
            return L"HKEY_CURRENT_USER";
        case RegistryRoot::LocalMachine:
            return L"HKEY_LOCAL_MACHINE";
        default:
            return L"HKEY_USERS";
    }
}

class Win32RegistryStore final : public RegistryStore {
  public:
    // `hive_file`: the private file to use instead of the system's registry, or empty.
    explicit Win32RegistryStore(std::wstring hive_file) : hive_file_(std::move(hive_file)) {}
    Win32RegistryStore(const Win32RegistryStore&) = delete;
    Win32RegistryStore& operator=(const Win32RegistryStore&) = delete;
    ~Win32RegistryStore() override {
        for (auto& [where, h] : remote_) RegCloseKey(h);
        for (HKEY h : hive_roots_)
            if (h) RegCloseKey(h);
        if (hive_) RegCloseKey(hive_);
    }

    int connect(std::string_view machine, RegistryRoot root) override {
        if (!hive_file_.empty()) return ERROR_BAD_NETPATH;
        const auto where = std::make_pair(text::to_upper(machine), root);
        if (remote_.count(where)) return ERROR_SUCCESS;
        HKEY h = nullptr;
        const LONG rc = RegConnectRegistryW(widen(machine).c_str(), root_handle(root), &h);
        if (rc == ERROR_SUCCESS) remote_.emplace(where, h);
        return static_cast<int>(rc);
    }

    RegistryStatus open_key(const RegistryKeyRef& key) override {
        KeyHandle k;
        return {open(key, KEY_READ, k), RegistryStep::Open};
    }

    RegistryStatus create_key(const RegistryKeyRef& key) override {
        HKEY base = nullptr;
        if (const int code = base_of(key, base)) return {code, RegistryStep::Open};
        if (!valid_names(key.subkey)) return {ERROR_INVALID_PARAMETER, RegistryStep::Open};
        KeyHandle k;
        const LONG rc =
            RegCreateKeyExW(base, subkey_text(key.subkey).c_str(), 0, nullptr,
                            REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, k.out(), nullptr);
        return {static_cast<int>(rc), RegistryStep::Open};
    }

    RegistryStatus read_value(const RegistryKeyRef& key, std::string_view name,
                              RegistryData& out) override {
        KeyHandle k;
        if (const int code = open(key, KEY_QUERY_VALUE, k)) return {code, RegistryStep::Open};
        const std::wstring wname = widen(name);
        DWORD type = 0;
        std::string raw;
        LONG rc = ERROR_MORE_DATA;
        for (DWORD size = 256; rc == ERROR_MORE_DATA;) {
            raw.resize(size);
            rc = RegQueryValueExW(k.get(), wname.c_str(), nullptr, &type,
                                  reinterpret_cast<BYTE*>(raw.data()), &size);
            if (rc == ERROR_SUCCESS) raw.resize(size);
        }
        if (rc != ERROR_SUCCESS) return {static_cast<int>(rc), RegistryStep::Work};
        out.type = type;
        out.bytes = engine_bytes(type, raw);
        return {};
    }

    RegistryStatus set_value(const RegistryKeyRef& key, std::string_view name,
                             const RegistryData& data) override {
        KeyHandle k;
        if (const int code = open(key, KEY_SET_VALUE, k)) return {code, RegistryStep::Open};
        if (text::char_count(name) > kMaxValueNameChars)
            return {ERROR_INVALID_PARAMETER, RegistryStep::Work};
        const std::string bytes = stored_bytes(data);
        const LONG rc = RegSetValueExW(k.get(), widen(name).c_str(), 0, data.type,
                                       reinterpret_cast<const BYTE*>(bytes.data()),
                                       static_cast<DWORD>(bytes.size()));
        return {static_cast<int>(rc), RegistryStep::Work};
    }

    RegistryStatus delete_value(const RegistryKeyRef& key, std::string_view name) override {
        KeyHandle k;
        if (const int code = open(key, KEY_SET_VALUE, k)) return {code, RegistryStep::Open};
        const LONG rc = RegDeleteValueW(k.get(), widen(name).c_str());
        return {static_cast<int>(rc), RegistryStep::Work};
    }

    RegistryStatus delete_key(const RegistryKeyRef& key) override {
        {
            KeyHandle k;
            if (const int code = open(key, KEY_READ, k)) return {code, RegistryStep::Open};
        }
        const std::wstring sub = subkey_text(key.subkey);
        if (sub.empty()) return {ERROR_ACCESS_DENIED, RegistryStep::Work};
        HKEY base = nullptr;
        base_of(key, base);
        return {static_cast<int>(RegDeleteTreeW(base, sub.c_str())), RegistryStep::Work};
    }

    RegistryStatus enum_key(const RegistryKeyRef& key, std::uint32_t index,
                            std::string& name) override {
        return enumerate(key, index, name, true);
    }
    RegistryStatus enum_value(const RegistryKeyRef& key, std::uint32_t index,
                              std::string& name) override {
        return enumerate(key, index, name, false);
    }

    std::string error_text(int code) override {
        return system_message(static_cast<DWORD>(code)) + " (" + std::to_string(code) + ")";
    }

  private:
    // The root handle a key hangs from: a local root, its stand-in in the private file, or a
    // connected root on another machine.
    int base_of(const RegistryKeyRef& key, HKEY& base) {
        if (key.root == RegistryRoot::None) return ERROR_INVALID_HANDLE;
        if (!hive_file_.empty()) return hive_root(key, base);
        if (key.machine.empty()) {
            base = root_handle(key.root);
            return ERROR_SUCCESS;
        }
        if (const int code = connect(key.machine, key.root)) return code;
        base = remote_.at(std::make_pair(text::to_upper(key.machine), key.root));
        return ERROR_SUCCESS;
    }

    int hive_root(const RegistryKeyRef& key, HKEY& base) {
        if (!key.machine.empty()) return ERROR_BAD_NETPATH;
        if (!hive_) {
            const LONG rc = RegLoadAppKeyW(hive_file_.c_str(), &hive_, KEY_ALL_ACCESS, 0, 0);
            if (rc != ERROR_SUCCESS) {
                hive_ = nullptr;
                return static_cast<int>(rc);
            }
        }
        HKEY& root = hive_roots_[static_cast<std::uint32_t>(key.root) & 3u];
        if (!root) {
            const LONG rc =
                RegCreateKeyExW(hive_, root_name(key.root), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                KEY_ALL_ACCESS, nullptr, &root, nullptr);
            if (rc != ERROR_SUCCESS) {
                root = nullptr;
                return static_cast<int>(rc);
            }
        }
        base = root;
        return ERROR_SUCCESS;
    }

    int open(const RegistryKeyRef& key, REGSAM access, KeyHandle& k) {
        HKEY base = nullptr;
        if (const int code = base_of(key, base)) return code;
        if (!valid_names(key.subkey)) return ERROR_INVALID_PARAMETER;
        return static_cast<int>(
            RegOpenKeyExW(base, subkey_text(key.subkey).c_str(), 0, access, k.out()));
    }

    // The names of a key's subkeys or values in case-blind order. The list is read afresh for
    // index 0 (a new round) and kept for the calls after it.
    RegistryStatus enumerate(const RegistryKeyRef& key, std::uint32_t index, std::string& name,
                             bool keys) {
        const std::string where = std::string(keys ? "K" : "V") + text::to_upper(key.machine) +
                                  "\\" + std::to_string(static_cast<std::uint32_t>(key.root)) +
                                  "\\" + text::to_upper(key.subkey);
        if (index == 0 || where != listed_) {
            listed_.clear();
            KeyHandle k;
            if (const int code = open(key, KEY_READ, k)) return {code, RegistryStep::Open};
            const LONG rc = keys ? list_keys(k.get()) : list_values(k.get());
            if (rc != ERROR_SUCCESS) return {static_cast<int>(rc), RegistryStep::Work};
            std::sort(names_.begin(), names_.end(), ordinal_less);
            listed_ = where;
        }
        if (index >= names_.size()) return {ERROR_NO_MORE_ITEMS, RegistryStep::Work};
        name = narrow(names_[index]);
        return {};
    }

    LONG list_keys(HKEY k) {
        names_.clear();
        for (DWORD i = 0;; ++i) {
            wchar_t buffer[256];
            DWORD size = 256;
            const LONG rc = RegEnumKeyExW(k, i, buffer, &size, nullptr, nullptr, nullptr, nullptr);
            if (rc == ERROR_NO_MORE_ITEMS) return ERROR_SUCCESS;
            if (rc != ERROR_SUCCESS) return rc;
            names_.emplace_back(buffer, size);
        }
    }

    LONG list_values(HKEY k) {
        names_.clear();
        DWORD longest = 0;
        LONG rc = RegQueryInfoKeyW(k, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                   &longest, nullptr, nullptr, nullptr);
        if (rc != ERROR_SUCCESS) return rc;
        std::wstring buffer(longest + 1, L'\0');
        for (DWORD i = 0;; ++i) {
            DWORD size = static_cast<DWORD>(buffer.size());
            rc = RegEnumValueW(k, i, buffer.data(), &size, nullptr, nullptr, nullptr, nullptr);
            if (rc == ERROR_NO_MORE_ITEMS) return ERROR_SUCCESS;
            if (rc == ERROR_MORE_DATA) {  // a value added since the size was asked
                buffer.resize(buffer.size() * 2 + 256);
                --i;
                continue;
            }
            if (rc != ERROR_SUCCESS) return rc;
            names_.emplace_back(buffer.data(), size);
        }
    }

    std::wstring hive_file_;
    HKEY hive_ = nullptr;
    HKEY hive_roots_[4] = {};
    std::map<std::pair<std::string, RegistryRoot>, HKEY> remote_;
    std::string listed_;
    std::vector<std::wstring> names_;
};

}  // namespace
}  // namespace quiller::win32

namespace quiller {

std::unique_ptr<RegistryStore> make_registry_store() {
    std::wstring file(MAX_PATH, L'\0');
    DWORD n = GetEnvironmentVariableW(L"QUILLER_REGISTRY", file.data(), MAX_PATH);
    if (n >= MAX_PATH) {
        file.resize(n);
        n = GetEnvironmentVariableW(L"QUILLER_REGISTRY", file.data(), n);
    }
    file.resize(n < file.size() ? n : 0);
    if (!file.empty() && win32::running_under_wine()) return make_memory_registry_store();
    return std::make_unique<win32::Win32RegistryStore>(std::move(file));
}

}  // namespace quiller
