// File status, wildcard listing, whole-file reads and appends, and system messages on Win32.
#include "os/win32/win32_handle.hpp"
#include "os/file_operation_paths.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

std::int64_t size_of(DWORD high, DWORD low) {
    return static_cast<std::int64_t>((static_cast<std::uint64_t>(high) << 32) | low);
}

bool is_ordinary(DWORD attributes) {
    return (attributes &
            (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY)) == 0;
}

}  // namespace

std::string system_message(unsigned long code) {
    wchar_t* buffer = nullptr;
    const DWORD n = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, code, 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    std::wstring text(buffer ? buffer : L"", n);
    if (buffer) LocalFree(buffer);
    while (!text.empty() && (text.back() == L'\r' || text.back() == L'\n' || text.back() == L' ' ||
                             text.back() == L'.'))
        text.pop_back();
    return text.empty() ? std::string("Unknown error") : narrow(text);
}

Result<FileEntry> Win32FileSystem::status(const std::string& path) {
    if (path.empty()) return system_error(ERROR_FILE_NOT_FOUND);
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(native_path(path).c_str(), GetFileExInfoStandard, &data))
        return last_system_error();
    FileEntry e;
    e.name = fileops::split(fileops::strip_trailing_separators(path)).name;
    e.attributes = static_cast<std::uint32_t>(data.dwFileAttributes);
    e.directory = (e.attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    e.size = size_of(data.nFileSizeHigh, data.nFileSizeLow);
    e.modified = unix_seconds(data.ftLastWriteTime);
    return e;
}

bool Win32FileSystem::any_ordinary_file(const std::string& pattern) {
    WIN32_FIND_DATAW entry{};
    FindHandle find(FindFirstFileExW(native_path(pattern).c_str(), FindExInfoBasic, &entry,
                                     FindExSearchNameMatch, nullptr, 0));
    if (!find.valid()) return false;
    do {
        if (is_ordinary(entry.dwFileAttributes)) return true;
    } while (FindNextFileW(find.get(), &entry));
    return false;
}

Result<std::string> Win32FileSystem::read_file(const std::string& path) {
    FileHandle file(CreateFileW(native_path(path).c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file.valid()) return last_system_error();
    std::string content;
    char buffer[65536];
    DWORD n = 0;
    while (ReadFile(file.get(), buffer, sizeof buffer, &n, nullptr)) {
        if (n == 0) return content;
        content.append(buffer, n);
    }
    return last_system_error();
}

Status Win32FileSystem::append_file(const std::string& path, std::string_view bytes) {
    FileHandle file(CreateFileW(native_path(path).c_str(), FILE_APPEND_DATA,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid()) return last_system_error();
    if (!write_all(file.get(), bytes.data(), bytes.size()) || !file.close())
        return last_system_error();
    return {};
}

// The temporary folder is the user's own on Windows; the log is appended to as any file.
Status Win32FileSystem::append_private(const std::string& path, std::string_view bytes) {
    FileHandle file(CreateFileW(native_path(path).c_str(), FILE_APPEND_DATA,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid()) return last_system_error();
    if (GetFileType(file.get()) != FILE_TYPE_DISK) return system_error(ERROR_INVALID_FUNCTION);
    if (!write_all(file.get(), bytes.data(), bytes.size()) || !file.close())
        return last_system_error();
    return {};
}

}  // namespace quiller::win32
