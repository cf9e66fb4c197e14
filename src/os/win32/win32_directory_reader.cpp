// Folders on Windows: one FindFirstFileExW search per folder gives every entry's attributes,
// time and size. A reparse point is looked through to what it points to; one that is a folder
// is recorded but never entered.
#include <windows.h>

#include "os/directory_reader.hpp"
#include "os/platform.hpp"
#include "os/win32/win32_platform.hpp"
#include "os/win32/win32_raw_file.hpp"

namespace quiller {
namespace {

void set_status(DirectoryEntry& e, DWORD attributes, const FILETIME& written, DWORD size_high,
                DWORD size_low) {
    e.attributes = attributes & 0xFFFF & ~static_cast<std::uint32_t>(kAttrCompressed);
    e.modified = win32::unix_seconds(written);
    if (attributes & FILE_ATTRIBUTE_DIRECTORY) return;
    e.size = (static_cast<std::int64_t>(size_high) << 32) | size_low;
}

// The status of what a reparse point points to.
void follow_link(const std::wstring& path, DirectoryEntry& e) {
    HANDLE h = CreateFileW(path.c_str(), FILE_READ_ATTRIBUTES,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    BY_HANDLE_FILE_INFORMATION info{};
    if (h == INVALID_HANDLE_VALUE || !GetFileInformationByHandle(h, &info)) {
        e.error = static_cast<int>(GetLastError());
        e.attributes = 0;
        if (h != INVALID_HANDLE_VALUE) CloseHandle(h);
        return;
    }
    CloseHandle(h);
    set_status(e, info.dwFileAttributes & ~FILE_ATTRIBUTE_REPARSE_POINT, info.ftLastWriteTime,
               info.nFileSizeHigh, info.nFileSizeLow);
}

class Win32DirectoryReader final : public DirectoryReader {
  public:
    int list(const std::string& path, std::vector<DirectoryEntry>& entries) override {
        entries.clear();
        std::wstring folder = win32::native_path(path);
        if (!folder.empty() && folder.back() != L'\\') folder += L'\\';
        WIN32_FIND_DATAW found{};
        HANDLE search = FindFirstFileExW((folder + L"*").c_str(), FindExInfoBasic, &found,
                                         FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
        if (search == INVALID_HANDLE_VALUE) {
            const DWORD error = GetLastError();
            return error == ERROR_FILE_NOT_FOUND ? 0 : static_cast<int>(error);
        }
        DWORD error = 0;
        do {
            const std::wstring_view name = found.cFileName;
            if (name == L"." || name == L"..") continue;
            DirectoryEntry& e = entries.emplace_back();
            e.name = win32::narrow(name);
            const DWORD a = found.dwFileAttributes;
            set_status(e, a, found.ftLastWriteTime, found.nFileSizeHigh, found.nFileSizeLow);
            if (a & FILE_ATTRIBUTE_REPARSE_POINT) {
                follow_link(folder + found.cFileName, e);
                e.kind = (e.attributes & kAttrDirectory) ? DirectoryEntry::Kind::FolderLink
                                                         : DirectoryEntry::Kind::File;
            } else if (a & FILE_ATTRIBUTE_DIRECTORY) {
                e.kind = DirectoryEntry::Kind::Folder;
            } else if (a & FILE_ATTRIBUTE_DEVICE) {
                e.kind = DirectoryEntry::Kind::Other;
            }
        } while (FindNextFileW(search, &found));
        error = GetLastError();
        FindClose(search);
        if (error == ERROR_NO_MORE_FILES) return 0;
        entries.clear();
        return static_cast<int>(error);
    }

    SystemError describe(int error) const override {
        return win32::system_error(static_cast<DWORD>(error));
    }
    bool transient(int error) const override {
        switch (error) {
            case ERROR_NOT_ENOUGH_MEMORY:
            case ERROR_OUTOFMEMORY:
            case ERROR_TOO_MANY_OPEN_FILES:
            case ERROR_SHARING_VIOLATION:
            case ERROR_LOCK_VIOLATION:
            case ERROR_BUSY:
            case ERROR_NETNAME_DELETED:
            case ERROR_UNEXP_NET_ERR:
            case ERROR_NETWORK_BUSY:
            case ERROR_SEM_TIMEOUT:
            case ERROR_BAD_NETPATH:
            case ERROR_NETWORK_UNREACHABLE:
            case ERROR_CONNECTION_ABORTED:
            case ERROR_REM_NOT_LIST:
                return true;
            default:
                return false;
        }
    }
};

}  // namespace

std::unique_ptr<DirectoryReader> make_directory_reader() {
    return std::make_unique<Win32DirectoryReader>();
}

}  // namespace quiller
