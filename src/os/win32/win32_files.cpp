// File status, wildcard listing, whole-file reads and appends, and system error texts on Win32.
#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

// 100-nanosecond intervals between 1601-01-01 and 1970-01-01.
constexpr std::int64_t kUnixEpochTicks = 116444736000000000LL;

std::int64_t unix_seconds(const FILETIME& ft) {
    const std::int64_t ticks =
        (static_cast<std::int64_t>(ft.dwHighDateTime) << 32) | ft.dwLowDateTime;
    const std::int64_t since_epoch = ticks - kUnixEpochTicks;
    // Rounds towards minus infinity, so times before 1970 stay in their own second.
    return since_epoch >= 0 ? since_epoch / 10000000 : -((-since_epoch + 9999999) / 10000000);
}

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

std::optional<FileStatus> Win32FileSystem::status(const std::string& path) {
    if (path.empty()) return std::nullopt;
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(native_path(path).c_str(), GetFileExInfoStandard, &data))
        return std::nullopt;
    return FileStatus{static_cast<std::uint32_t>(data.dwFileAttributes),
                      size_of(data.nFileSizeHigh, data.nFileSizeLow),
                      unix_seconds(data.ftLastWriteTime)};
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

std::optional<std::string> Win32FileSystem::read_file(const std::string& path, int& error) {
    FileHandle file(CreateFileW(native_path(path).c_str(), GENERIC_READ,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file.valid()) {
        error = static_cast<int>(GetLastError());
        return std::nullopt;
    }
    std::string content;
    char buffer[65536];
    DWORD n = 0;
    while (ReadFile(file.get(), buffer, sizeof buffer, &n, nullptr)) {
        if (n == 0) return content;
        content.append(buffer, n);
    }
    error = static_cast<int>(GetLastError());
    return std::nullopt;
}

bool Win32FileSystem::append_file(const std::string& path, std::string_view bytes) {
    FileHandle file(CreateFileW(native_path(path).c_str(), FILE_APPEND_DATA,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid()) return false;
    const bool ok = write_all(file.get(), bytes.data(), bytes.size());
    return file.close() && ok;
}

// The temporary folder is the user's own on Windows; the log is appended to as any file.
bool Win32FileSystem::append_private(const std::string& path, std::string_view bytes, int& error) {
    FileHandle file(CreateFileW(native_path(path).c_str(), FILE_APPEND_DATA,
                                FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid() || GetFileType(file.get()) != FILE_TYPE_DISK) {
        error = file.valid() ? ERROR_INVALID_FUNCTION : static_cast<int>(GetLastError());
        return false;
    }
    if (!write_all(file.get(), bytes.data(), bytes.size()) || !file.close()) {
        error = static_cast<int>(GetLastError());
        return false;
    }
    return true;
}

std::string Win32FileSystem::error_text(int code) {
    return system_message(static_cast<DWORD>(code)) + " (" + std::to_string(code) + ")";
}

}  // namespace quiller::win32
