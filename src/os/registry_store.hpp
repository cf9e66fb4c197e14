// The registry: keys and typed values under the four roots, on this machine or another (on POSIX a
// durable SQLite store). Every call names its key by path and reports with a platform error code,
// so the registry operations can word their messages and show the platform's text.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace quiller {

// The root handles of the four roots; None for an unknown root name.
enum class RegistryRoot : std::uint32_t {
    None = 0,
    ClassesRoot = 0x80000000,
    CurrentUser = 0x80000001,
    LocalMachine = 0x80000002,
    Users = 0x80000003,
};

// Value type codes.
namespace reg_type {
inline constexpr std::uint32_t kNone = 0;
inline constexpr std::uint32_t kSz = 1;
inline constexpr std::uint32_t kExpandSz = 2;
inline constexpr std::uint32_t kBinary = 3;
inline constexpr std::uint32_t kDword = 4;
inline constexpr std::uint32_t kDwordBigEndian = 5;
inline constexpr std::uint32_t kMultiSz = 7;
inline constexpr std::uint32_t kQword = 11;
}  // namespace reg_type

// Error codes, numbered as on Windows so that both stores report alike.
namespace reg_error {
inline constexpr int kOk = 0;
inline constexpr int kFileNotFound = 2;
inline constexpr int kAccessDenied = 5;
inline constexpr int kInvalidHandle = 6;
inline constexpr int kOutOfMemory = 14;
inline constexpr int kBadNetPath = 53;
inline constexpr int kInvalidParameter = 87;
inline constexpr int kBusy = 170;
inline constexpr int kNoMoreItems = 259;
inline constexpr int kCorrupt = 1015;
inline constexpr int kIoFailed = 1016;
}  // namespace reg_error

// "text (code)" for the codes above, worded as Windows words them (for stores without a
// message table of their own).
std::string registry_error_text(int code);

// A key: machine ("\\server", empty for this one), root and subkey path ("Software\Quiller",
// empty for the root itself).
struct RegistryKeyRef {
    std::string_view machine;
    RegistryRoot root = RegistryRoot::None;
    std::string_view subkey;
};

// A value's type and data. Text types (REG_SZ, REG_EXPAND_SZ) hold UTF-8 without a closing NUL;
// REG_MULTI_SZ holds its UTF-8 items separated by NUL (no closing NULs); every other type holds
// its bytes as stored (REG_DWORD: 4 bytes, little-endian).
struct RegistryData {
    std::uint32_t type = reg_type::kNone;
    std::string bytes;
};

// Where a call failed: opening (or creating) the key, or the work on it.
enum class RegistryStep { Open, Work };

struct RegistryStatus {
    int code = reg_error::kOk;
    RegistryStep step = RegistryStep::Open;
    bool ok() const { return code == reg_error::kOk; }
};

class RegistryStore {
  public:
    virtual ~RegistryStore() = default;

    // Connects to another machine's registry under `root`; keys on that machine can then be
    // named with its prefix. 0 or an error code.
    virtual int connect(std::string_view machine, RegistryRoot root) = 0;

    // Opens the key: the step is Open when it doesn't exist or can't be read.
    virtual RegistryStatus open_key(const RegistryKeyRef& key) = 0;
    // Creates the key and its missing parents (nothing to do when it exists).
    virtual RegistryStatus create_key(const RegistryKeyRef& key) = 0;
    // Reads a value ("" is the key's default value).
    virtual RegistryStatus read_value(const RegistryKeyRef& key, std::string_view name,
                                      RegistryData& out) = 0;
    // Sets a value of an existing key.
    virtual RegistryStatus set_value(const RegistryKeyRef& key, std::string_view name,
                                     const RegistryData& data) = 0;
    // Creates the key as needed and sets the value, as one unit where the store can.
    virtual RegistryStatus write_value(const RegistryKeyRef& key, std::string_view name,
                                       const RegistryData& data) {
        const RegistryStatus made = create_key(key);
        return made.ok() ? set_value(key, name, data) : made;
    }
    virtual RegistryStatus delete_value(const RegistryKeyRef& key, std::string_view name) = 0;
    // Deletes a key with all its subkeys and values. A root can't be deleted.
    virtual RegistryStatus delete_key(const RegistryKeyRef& key) = 0;
    // The name of the subkey or value at `index` in case-blind alphabetical order (the default
    // value, named "", first); kNoMoreItems (step Work) past the last.
    virtual RegistryStatus enum_key(const RegistryKeyRef& key, std::uint32_t index,
                                    std::string& name) = 0;
    virtual RegistryStatus enum_value(const RegistryKeyRef& key, std::uint32_t index,
                                      std::string& name) = 0;

    // The platform's text for an error code, as "text (code)".
    virtual std::string error_text(int code) = 0;

    // Many writes as one unit (a registry file): a store may keep them in one transaction.
    // end_batch() returns 0 or the error that lost the batch's changes.
    virtual void begin_batch() {}
    virtual int end_batch() { return reg_error::kOk; }
};

// The implementation for the platform this build targets: on POSIX the store named by
// QUILLER_REGISTRY, opened on first use.
std::unique_ptr<RegistryStore> make_registry_store();

// A store in memory, empty at start (tests, and runs that must not touch a real store).
std::unique_ptr<RegistryStore> make_memory_registry_store();

}  // namespace quiller
