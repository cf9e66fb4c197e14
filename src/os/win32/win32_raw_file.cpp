// Open files and the path operations under the shared file code, on Win32.
#include "os/win32/win32_raw_file.hpp"

#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
// What a replaced file keeps, and what a copy takes from its source.
constexpr DWORD kKeptOnReplace =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
constexpr DWORD kCopied = FILE_ATTRIBUTE_READONLY | kKeptOnReplace |
                          FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_TEMPORARY;

ErrorKind kind_of(DWORD code) {
    switch (code) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_BAD_PATHNAME:
        case ERROR_INVALID_NAME:
            return ErrorKind::NotFound;
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return ErrorKind::Exists;
        case ERROR_CANCELLED:
            return ErrorKind::Cancelled;
        default:
            return ErrorKind::Other;
    }
}

bool identity(HANDLE h, BY_HANDLE_FILE_INFORMATION& info) {
    return GetFileInformationByHandle(h, &info) != 0;
}

}  // namespace

SystemError system_error(DWORD code) {
    return {static_cast<int>(code), system_message(code), kind_of(code)};
}

SystemError last_system_error() {
    return system_error(GetLastError());
}

Result<std::size_t> Win32RawFile::read(char* buffer, std::size_t size) {
    const DWORD chunk = size > 0x40000000 ? 0x40000000 : static_cast<DWORD>(size);
    DWORD n = 0;
    if (!ReadFile(file_.get(), buffer, chunk, &n, nullptr)) {
        const DWORD code = GetLastError();
        if (code == ERROR_BROKEN_PIPE || code == ERROR_HANDLE_EOF) return std::size_t{0};
        return system_error(code);
    }
    return std::size_t{n};
}

Status Win32RawFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const DWORD chunk =
            bytes.size() > 0x40000000 ? 0x40000000 : static_cast<DWORD>(bytes.size());
        DWORD written = 0;
        if (!WriteFile(file_.get(), bytes.data(), chunk, &written, nullptr))
            return last_system_error();
        if (written == 0) return system_error(ERROR_WRITE_FAULT);
        bytes.remove_prefix(written);
    }
    return {};
}

Status Win32RawFile::flush() {
    return FlushFileBuffers(file_.get()) ? Status() : last_system_error();
}

Status Win32RawFile::take_stamp(RawFile& source) {
    auto& from = static_cast<Win32RawFile&>(source);
    FILE_BASIC_INFO info{};
    if (!GetFileInformationByHandleEx(from.file_.get(), FileBasicInfo, &info, sizeof info))
        return last_system_error();
    FILE_BASIC_INFO stamp{};  // zero times stay as they are
    stamp.LastWriteTime = info.LastWriteTime;
    stamp.FileAttributes = info.FileAttributes & kCopied;
    if (stamp.FileAttributes == 0) stamp.FileAttributes = FILE_ATTRIBUTE_NORMAL;
    if (!SetFileInformationByHandle(file_.get(), FileBasicInfo, &stamp, sizeof stamp))
        return last_system_error();
    return {};
}

bool Win32RawFile::is(const std::string& path) {
    FileHandle other(CreateFileW(native_path(path).c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                 FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    BY_HANDLE_FILE_INFORMATION a{}, b{};
    return other.valid() && identity(file_.get(), a) && identity(other.get(), b) &&
           a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

Status Win32RawFile::close() {
    return file_.close() ? Status() : last_system_error();
}

// The attributes are the name's own, so a link is never followed: MoveFileExW replaces the link.
Result<std::string> Win32Primitives::replaceable(const std::string& path, bool follow_link,
                                                 RawFile* source) {
    const std::wstring target = full_path(widen(path));
    if (!follow_link) return narrow(target);
    const DWORD old = GetFileAttributesW(native_path(narrow(target)).c_str());
    if (old != INVALID_FILE_ATTRIBUTES && source && source->is(path)) return same_file();
    if (old != INVALID_FILE_ATTRIBUTES &&
        (old & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)))
        return system_error(ERROR_ACCESS_DENIED);
    return narrow(target);
}

// Only disk files: a pipe could block, a device stream for ever.
Result<std::unique_ptr<RawFile>> Win32Primitives::open_source(const std::string& path) {
    FileHandle file(CreateFileW(native_path(path).c_str(), GENERIC_READ, kShareAll, nullptr,
                                OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    if (!file.valid()) return last_system_error();
    if (GetFileType(file.get()) != FILE_TYPE_DISK) return system_error(ERROR_INVALID_PARAMETER);
    return std::unique_ptr<RawFile>(std::make_unique<Win32RawFile>(std::move(file)));
}

Result<std::unique_ptr<RawFile>> Win32Primitives::create_new(const std::string& path,
                                                             const std::string& like) {
    const DWORD old =
        like.empty() ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(native_path(like).c_str());
    const DWORD kept = old == INVALID_FILE_ATTRIBUTES ? 0 : old & kKeptOnReplace;
    FileHandle file(CreateFileW(native_path(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                kept ? kept : FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid()) return last_system_error();
    return std::unique_ptr<RawFile>(std::make_unique<Win32RawFile>(std::move(file)));
}

Status Win32Primitives::rename_over(const std::string& from, const std::string& to,
                                    bool durable) {
    if (MoveFileExW(native_path(from).c_str(), native_path(to).c_str(),
                    MOVEFILE_REPLACE_EXISTING | (durable ? MOVEFILE_WRITE_THROUGH : 0)))
        return {};
    return last_system_error();
}

void Win32Primitives::discard(const std::string& path) {
    const std::wstring p = native_path(path);
    SetFileAttributesW(p.c_str(), FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(p.c_str());
}

SystemError Win32Primitives::cancelled() {
    return system_error(ERROR_CANCELLED);
}

SystemError Win32Primitives::same_file() {
    return system_error(ERROR_INVALID_PARAMETER);
}

int Win32Primitives::process_id() {
    return static_cast<int>(GetCurrentProcessId());
}

}  // namespace quiller::win32
