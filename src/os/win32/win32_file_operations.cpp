// Looking at paths on Win32, and the changes that are one system call.
#include "os/win32/win32_file_operations.hpp"

#include "value/text.hpp"
#include "os/file_operation_paths.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

constexpr std::int64_t kUnixEpochTicks = 116444736000000000LL;  // 1601 to 1970, in 100 ns
constexpr DWORD kNameSurrogate = 0x20000000;

std::int64_t unix_seconds(const FILETIME& ft) {
    const std::int64_t ticks =
        (static_cast<std::int64_t>(ft.dwHighDateTime) << 32) | ft.dwLowDateTime;
    const std::int64_t since = ticks - kUnixEpochTicks;
    return since >= 0 ? since / 10000000 : -((-since + 9999999) / 10000000);
}

// The plain form of a path the system gave back with a prefix.
std::wstring without_prefix(std::wstring p) {
    if (p.starts_with(L"\\\\?\\UNC\\")) return L"\\\\" + p.substr(8);
    if (p.starts_with(L"\\\\?\\")) return p.substr(4);
    return p;
}

FileEntry entry_of(const WIN32_FIND_DATAW& d) {
    FileEntry e;
    e.name = narrow(d.cFileName);
    e.directory = (d.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    e.link = is_link(d.dwFileAttributes, d.dwReserved0);
    e.attributes = static_cast<std::uint32_t>(d.dwFileAttributes);
    e.size = e.directory
                 ? 0
                 : static_cast<std::int64_t>((static_cast<std::uint64_t>(d.nFileSizeHigh) << 32) |
                                             d.nFileSizeLow);
    e.modified = unix_seconds(d.ftLastWriteTime);
    return e;
}

HANDLE open_any(const std::wstring& p) {
    return CreateFileW(p.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                       nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

// The final path of an existing file or directory, links resolved; empty on failure.
std::wstring final_path(const std::wstring& p, int& error) {
    const std::wstring prefixed =
        p.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + p.substr(2) : L"\\\\?\\" + p;
    FileHandle h(open_any(prefixed));
    if (!h.valid()) {
        error = last_error();
        return {};
    }
    std::wstring out(MAX_PATH, L'\0');
    for (;;) {
        const DWORD n =
            GetFinalPathNameByHandleW(h.get(), out.data(), static_cast<DWORD>(out.size()), 0);
        if (n == 0) {
            error = last_error();
            return {};
        }
        if (n < out.size()) {
            out.resize(n);
            return without_prefix(out);
        }
        out.resize(n + 1);
    }
}

bool not_found_code(int error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
           error == ERROR_BAD_NETPATH || error == ERROR_BAD_NET_NAME ||
           error == ERROR_BAD_PATHNAME || error == ERROR_INVALID_NAME;
}

bool succeeded(BOOL ok, int& error) {
    if (!ok) error = last_error();
    return ok != 0;
}

std::wstring append(std::wstring base, const std::vector<std::wstring>& reversed) {
    for (auto it = reversed.rbegin(); it != reversed.rend(); ++it) {
        if (it->empty() || *it == L".") continue;
        if (!base.ends_with(L"\\")) base += L"\\";
        base += *it;
    }
    return base;
}

std::string variable(const wchar_t* name) {
    std::wstring value(32767, L'\0');
    const DWORD n = GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
    value.resize(n < value.size() ? n : 0);
    return narrow(value);
}

}  // namespace

int last_error() {
    return static_cast<int>(GetLastError());
}

std::wstring long_path(std::string_view path) {
    const std::wstring w = widen(path);
    if (w.starts_with(L"\\\\?\\") || w.starts_with(L"\\\\.\\")) return w;
    const std::wstring full = full_path(w);
    if (full.starts_with(L"\\\\")) return L"\\\\?\\UNC\\" + full.substr(2);
    return L"\\\\?\\" + full;
}

bool is_link(DWORD attributes, DWORD tag) {
    return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) && (tag & kNameSurrogate);
}

std::optional<std::vector<WIN32_FIND_DATAW>> find_all(const std::wstring& dir, int& error) {
    const std::wstring pattern = dir + (dir.ends_with(L"\\") ? L"*" : L"\\*");
    WIN32_FIND_DATAW d{};
    FindHandle find(FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &d, FindExSearchNameMatch,
                                     nullptr, FIND_FIRST_EX_LARGE_FETCH));
    std::vector<WIN32_FIND_DATAW> out;
    if (!find.valid()) {
        error = last_error();
        if (error == ERROR_FILE_NOT_FOUND) return out;  // an empty root
        return std::nullopt;
    }
    do {
        const std::wstring_view name = d.cFileName;
        if (name != L"." && name != L"..") out.push_back(d);
    } while (FindNextFileW(find.get(), &d));
    return out;
}

DWORD reparse_tag(const std::wstring& p) {
    WIN32_FIND_DATAW d{};
    FindHandle find(
        FindFirstFileExW(p.c_str(), FindExInfoBasic, &d, FindExSearchNameMatch, nullptr, 0));
    return find.valid() ? d.dwReserved0 : 0;
}

std::optional<FileEntry> Win32FileOperations::entry(const std::string& path, int& error) {
    const std::wstring p = long_path(path);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (path.empty() || !GetFileAttributesExW(p.c_str(), GetFileExInfoStandard, &data)) {
        error = path.empty() ? ERROR_FILE_NOT_FOUND : last_error();
        return std::nullopt;
    }
    WIN32_FIND_DATAW d{};
    d.dwFileAttributes = data.dwFileAttributes;
    d.nFileSizeHigh = data.nFileSizeHigh;
    d.nFileSizeLow = data.nFileSizeLow;
    d.ftLastWriteTime = data.ftLastWriteTime;
    if (data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) d.dwReserved0 = reparse_tag(p);
    FileEntry e = entry_of(d);
    e.name = fileops::split(fileops::strip_trailing_separators(path)).name;
    return e;
}

std::optional<std::vector<FileEntry>> Win32FileOperations::list(const std::string& directory,
                                                                int& error) {
    const auto found = find_all(long_path(directory), error);
    if (!found) return std::nullopt;
    std::vector<FileEntry> entries;
    for (const WIN32_FIND_DATAW& d : *found) entries.push_back(entry_of(d));
    return entries;
}

bool Win32FileOperations::not_found(int error) {
    return not_found_code(error);
}

bool Win32FileOperations::same_file(const std::string& a, const std::string& b) {
    FileHandle ha(open_any(long_path(a)));
    FileHandle hb(open_any(long_path(b)));
    BY_HANDLE_FILE_INFORMATION ia{}, ib{};
    return ha.valid() && hb.valid() && GetFileInformationByHandle(ha.get(), &ia) &&
           GetFileInformationByHandle(hb.get(), &ib) &&
           ia.dwVolumeSerialNumber == ib.dwVolumeSerialNumber &&
           ia.nFileIndexHigh == ib.nFileIndexHigh && ia.nFileIndexLow == ib.nFileIndexLow;
}

std::string Win32FileOperations::resolve(const std::string& path) {
    std::wstring head = without_prefix(full_path(widen(path)));
    std::vector<std::wstring> missing;
    for (int guard = 0; guard < 4096 && !head.empty(); ++guard) {
        int code = 0;
        const std::wstring real = final_path(head, code);
        if (!real.empty()) return narrow(append(real, missing));
        if (!not_found_code(code)) return {};
        const std::size_t slash = head.find_last_of(L"\\/");
        if (slash == std::wstring::npos || fileops::is_root(narrow(head))) return {};
        missing.push_back(head.substr(slash + 1));
        head.erase(slash);
        if (fileops::is_root(narrow(head + L"\\"))) head += L"\\";
    }
    return {};
}

std::vector<std::string> Win32FileOperations::home_directories() {
    std::vector<std::string> homes;
    const std::string drive_path = variable(L"HOMEDRIVE") + variable(L"HOMEPATH");
    for (const std::string& home : {variable(L"USERPROFILE"), drive_path}) {
        const std::string resolved = home.empty() ? std::string() : resolve(home);
        if (!resolved.empty()) homes.push_back(resolved);
    }
    return homes;
}

bool Win32FileOperations::remove_file(const std::string& path, int& error) {
    return succeeded(DeleteFileW(long_path(path).c_str()), error);
}

bool Win32FileOperations::make_directory(const std::string& path, int& error) {
    return succeeded(CreateDirectoryW(long_path(path).c_str(), nullptr), error);
}

bool Win32FileOperations::remove_directory(const std::string& path, int& error) {
    return succeeded(RemoveDirectoryW(long_path(path).c_str()), error);
}

// A new spelling of the same name goes through a temporary name, as some file systems
// take a rename onto the same name for nothing to do.
bool Win32FileOperations::rename(const std::string& from, const std::string& to, int& error) {
    const std::wstring f = long_path(from);
    const std::wstring t = long_path(to);
    if (!text::iequals(from, to) || !same_file(from, to))
        return succeeded(MoveFileExW(f.c_str(), t.c_str(), 0), error);
    const std::wstring temp = t + L".~rename";
    if (!succeeded(MoveFileExW(f.c_str(), temp.c_str(), 0), error)) return false;
    if (succeeded(MoveFileExW(temp.c_str(), t.c_str(), 0), error)) return true;
    MoveFileExW(temp.c_str(), f.c_str(), 0);
    return false;
}

}  // namespace quiller::win32

namespace quiller {

std::unique_ptr<FileOperations> make_file_operations() {
    return std::make_unique<win32::Win32FileOperations>();
}

}  // namespace quiller
