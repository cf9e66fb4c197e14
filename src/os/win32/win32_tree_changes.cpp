// Removing a tree and setting attributes on Win32.
#include "os/removal_failures.hpp"
#include "os/win32/win32_paths.hpp"
#include "os/win32/win32_platform.hpp"
#include "os/win32/win32_raw_file.hpp"

#include <winioctl.h>  // after windows.h, which it needs

namespace quiller::win32 {
namespace {

constexpr DWORD kSettable = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                            FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                            FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_OFFLINE |
                            FILE_ATTRIBUTE_TEMPORARY;
constexpr DWORD kPlainBits = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                             FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;

// Turns NTFS compression on or off.
bool set_compression(const std::wstring& p, bool on) {
    FileHandle h(CreateFileW(p.c_str(), GENERIC_READ | GENERIC_WRITE,
                             FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                             FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!h.valid()) return false;
    USHORT format = on ? COMPRESSION_FORMAT_DEFAULT : COMPRESSION_FORMAT_NONE;
    DWORD returned = 0;
    return DeviceIoControl(h.get(), FSCTL_SET_COMPRESSION, &format, sizeof format, nullptr, 0,
                           &returned, nullptr) != 0;
}

// Removes a file or directory with `remove`, clearing its read-only bit first (a link's own
// attributes are left alone).
bool writable_then(const std::wstring& p, DWORD attributes, bool link, BOOL (*remove)(LPCWSTR)) {
    if ((attributes & FILE_ATTRIBUTE_READONLY) && !link) {
        const DWORD rest = attributes & kSettable & ~FILE_ATTRIBUTE_READONLY;
        SetFileAttributesW(p.c_str(), rest ? rest : FILE_ATTRIBUTE_NORMAL);
    }
    return remove(p.c_str()) != 0;
}

BOOL remove_dir(LPCWSTR p) {
    return RemoveDirectoryW(p);
}
BOOL remove_file(LPCWSTR p) {
    return DeleteFileW(p);
}

// Removes what lies inside a directory; a link is removed, never entered.
class TreeRemoval {
  public:
    explicit TreeRemoval(RemovalFailures& failures) : failures_(failures) {}
    void fail(const std::string& shown) { failures_.fail(shown, last_system_error()); }

    void empty(const std::wstring& dir, const std::string& shown) {
        const auto entries = find_all(dir);
        if (!entries) return failures_.fail(shown, entries.error());
        for (const WIN32_FIND_DATAW& d : *entries) {
            const std::wstring child = dir + L"\\" + d.cFileName;
            const std::string child_shown = failures_.child(shown, narrow(d.cFileName));
            const bool directory = (d.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
            const bool link = is_link(d.dwFileAttributes, d.dwReserved0);
            if (directory && !link) empty(child, child_shown);
            if (!writable_then(child, d.dwFileAttributes, link,
                               directory ? remove_dir : remove_file))
                fail(child_shown);
        }
    }

  private:
    RemovalFailures& failures_;
};

}  // namespace

Status Win32FileSystem::remove_tree(const std::string& path, std::string& failed) {
    const std::wstring p = long_path(path);
    const DWORD attributes = GetFileAttributesW(p.c_str());
    RemovalFailures failures(path);
    TreeRemoval removal(failures);
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        removal.fail(path);
    } else if (!(attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        failures.fail(path, system_error(ERROR_DIRECTORY));
    } else {
        const bool link =
            is_link(attributes, (attributes & FILE_ATTRIBUTE_REPARSE_POINT) ? reparse_tag(p) : 0);
        if (!link) removal.empty(p, path);
        if (failures.ok() && !writable_then(p, attributes, link, remove_dir)) removal.fail(path);
    }
    return failures.outcome(failed);
}

Result<AttributeOutcome> Win32FileSystem::set_attributes(const std::string& path,
                                                         std::uint32_t set, std::uint32_t clear) {
    const std::wstring p = long_path(path);
    const DWORD old = GetFileAttributesW(p.c_str());
    if (old == INVALID_FILE_ATTRIBUTES) return last_system_error();
    const DWORD wanted = ((old & kSettable) & ~(clear & kPlainBits)) | (set & kPlainBits);
    AttributeOutcome outcome;
    if ((set | clear) & FILE_ATTRIBUTE_COMPRESSED) {
        if (old & FILE_ATTRIBUTE_READONLY)
            SetFileAttributesW(p.c_str(), old & kSettable & ~FILE_ATTRIBUTE_READONLY);
        if (!set_compression(p, (set & FILE_ATTRIBUTE_COMPRESSED) != 0))
            outcome = {AttributeResult::NotKept, last_system_error()};
    }
    if (!SetFileAttributesW(p.c_str(), wanted ? wanted : FILE_ATTRIBUTE_NORMAL))
        return last_system_error();
    return outcome;
}

}  // namespace quiller::win32
