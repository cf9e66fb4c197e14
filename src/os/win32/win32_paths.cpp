// Files on Win32: looking at names and paths, and the changes that are one system call.
#include "os/win32/win32_paths.hpp"

#include "value/text.hpp"
#include "os/file_operation_paths.hpp"
#include "os/win32/win32_platform.hpp"
#include "os/win32/win32_raw_file.hpp"

namespace quiller::win32 {
namespace {

constexpr DWORD kNameSurrogate = 0x20000000;

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
std::wstring final_path(const std::wstring& p, DWORD& error) {
    const std::wstring prefixed =
        p.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + p.substr(2) : L"\\\\?\\" + p;
    FileHandle h(open_any(prefixed));
    if (!h.valid()) {
        error = GetLastError();
        return {};
    }
    std::wstring out(MAX_PATH, L'\0');
    for (;;) {
        const DWORD n =
            GetFinalPathNameByHandleW(h.get(), out.data(), static_cast<DWORD>(out.size()), 0);
        if (n == 0) {
            error = GetLastError();
            return {};
        }
        if (n < out.size()) {
            out.resize(n);
            return without_prefix(out);
        }
        out.resize(n + 1);
    }
}

Status succeeded(BOOL ok) {
    return ok ? Status() : Status(last_system_error());
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

Result<std::vector<WIN32_FIND_DATAW>> find_all(const std::wstring& dir) {
    const std::wstring pattern = dir + (dir.ends_with(L"\\") ? L"*" : L"\\*");
    WIN32_FIND_DATAW d{};
    FindHandle find(FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &d, FindExSearchNameMatch,
                                     nullptr, FIND_FIRST_EX_LARGE_FETCH));
    std::vector<WIN32_FIND_DATAW> out;
    if (!find.valid()) {
        const DWORD error = GetLastError();
        if (error == ERROR_FILE_NOT_FOUND) return out;  // an empty root
        return system_error(error);
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

Result<FileEntry> Win32FileSystem::entry(const std::string& path) {
    const std::wstring p = long_path(path);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (path.empty()) return system_error(ERROR_FILE_NOT_FOUND);
    if (!GetFileAttributesExW(p.c_str(), GetFileExInfoStandard, &data))
        return last_system_error();
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

Result<std::vector<FileEntry>> Win32FileSystem::list(const std::string& directory) {
    const auto found = find_all(long_path(directory));
    if (!found) return found.error();
    std::vector<FileEntry> entries;
    for (const WIN32_FIND_DATAW& d : *found) entries.push_back(entry_of(d));
    return entries;
}

bool Win32FileSystem::same_file(const std::string& a, const std::string& b) {
    FileHandle ha(open_any(long_path(a)));
    FileHandle hb(open_any(long_path(b)));
    BY_HANDLE_FILE_INFORMATION ia{}, ib{};
    return ha.valid() && hb.valid() && GetFileInformationByHandle(ha.get(), &ia) &&
           GetFileInformationByHandle(hb.get(), &ib) &&
           ia.dwVolumeSerialNumber == ib.dwVolumeSerialNumber &&
           ia.nFileIndexHigh == ib.nFileIndexHigh && ia.nFileIndexLow == ib.nFileIndexLow;
}

std::string Win32FileSystem::resolve(const std::string& path) {
    std::wstring head = without_prefix(full_path(widen(path)));
    std::vector<std::wstring> missing;
    for (int guard = 0; guard < 4096 && !head.empty(); ++guard) {
        DWORD code = 0;
        const std::wstring real = final_path(head, code);
        if (!real.empty()) return narrow(append(real, missing));
        if (system_error(code).kind != ErrorKind::NotFound) return {};
        const std::size_t slash = head.find_last_of(L"\\/");
        if (slash == std::wstring::npos || fileops::is_root(narrow(head))) return {};
        missing.push_back(head.substr(slash + 1));
        head.erase(slash);
        if (fileops::is_root(narrow(head + L"\\"))) head += L"\\";
    }
    return {};
}

std::vector<std::string> Win32FileSystem::home_directories() {
    std::vector<std::string> homes;
    const std::string drive_path = variable(L"HOMEDRIVE") + variable(L"HOMEPATH");
    for (const std::string& home : {variable(L"USERPROFILE"), drive_path}) {
        const std::string resolved = home.empty() ? std::string() : resolve(home);
        if (!resolved.empty()) homes.push_back(resolved);
    }
    return homes;
}

Status Win32FileSystem::remove_file(const std::string& path) {
    return succeeded(DeleteFileW(long_path(path).c_str()));
}

Status Win32FileSystem::make_directory(const std::string& path) {
    return succeeded(CreateDirectoryW(long_path(path).c_str(), nullptr));
}

Status Win32FileSystem::remove_directory(const std::string& path) {
    return succeeded(RemoveDirectoryW(long_path(path).c_str()));
}

// A new spelling of the same name goes through a temporary name, as some file systems
// take a rename onto the same name for nothing to do.
Status Win32FileSystem::rename(const std::string& from, const std::string& to) {
    const std::wstring f = long_path(from);
    const std::wstring t = long_path(to);
    if (!text::iequals(from, to) || !same_file(from, to))
        return succeeded(MoveFileExW(f.c_str(), t.c_str(), 0));
    const std::wstring temp = t + L".~rename";
    if (Status s = succeeded(MoveFileExW(f.c_str(), temp.c_str(), 0)); !s) return s;
    Status s = succeeded(MoveFileExW(temp.c_str(), t.c_str(), 0));
    if (!s) MoveFileExW(temp.c_str(), f.c_str(), 0);
    return s;
}

}  // namespace quiller::win32
