// Files opened by scripts, and replacement through the shared helper, on Win32.
//
// Only disk files are read (a pipe could block, a device stream for ever); writing also accepts
// character devices such as NUL. A file with the read-only attribute is never written, even by an
// administrator.
#include <string>

#include "os/buffered_file.hpp"
#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

DWORD access_for(OpenMode mode) {
    switch (mode) {
        case OpenMode::Write:
            return GENERIC_WRITE;
        case OpenMode::Append:
            return FILE_APPEND_DATA;
        case OpenMode::Read:
            break;
    }
    return GENERIC_READ;
}

// The read-only attribute decides, even for an administrator (or root under Wine).
bool is_read_only(const std::wstring& name) {
    const DWORD attrs = GetFileAttributesW(name.c_str());
    return attrs != INVALID_FILE_ATTRIBUTES && (attrs & FILE_ATTRIBUTE_READONLY);
}

// Why an opened handle can't serve the mode (0 when it can).
DWORD unusable(HANDLE h, OpenMode mode) {
    const DWORD type = GetFileType(h);
    if (type == FILE_TYPE_DISK) return 0;
    return mode != OpenMode::Read && type == FILE_TYPE_CHAR ? 0 : ERROR_INVALID_PARAMETER;
}

// Opens and checks the file; an invalid handle with `error` set on failure. Writing truncates
// only after the checks.
FileHandle open_checked(const std::string& path, OpenMode mode, DWORD& error) {
    const std::wstring name = native_path(path);
    if (mode != OpenMode::Read && is_read_only(name)) {
        error = ERROR_ACCESS_DENIED;
        return FileHandle();
    }
    const DWORD disposition = mode == OpenMode::Read ? OPEN_EXISTING : OPEN_ALWAYS;
    FileHandle file(CreateFileW(name.c_str(), access_for(mode), kShareAll, nullptr, disposition,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD code = file.valid() ? unusable(file.get(), mode) : GetLastError();
    if (code == 0 && mode == OpenMode::Write && GetFileType(file.get()) == FILE_TYPE_DISK &&
        !SetEndOfFile(file.get()))
        code = GetLastError();
    if (code == 0) return file;
    error = code;
    return FileHandle();
}

}  // namespace

Result<std::unique_ptr<OpenFile>> Win32FileSystem::open(const std::string& path, OpenMode mode) {
    if (path.empty()) return system_error(ERROR_FILE_NOT_FOUND);
    DWORD error = 0;
    FileHandle file = open_checked(path, mode, error);
    if (!file.valid()) return system_error(error);
    return std::unique_ptr<OpenFile>(
        std::make_unique<BufferedFile>(std::make_unique<Win32RawFile>(std::move(file))));
}

Status Win32FileSystem::replace_file(const std::string& path, std::string_view bytes) {
    return replace_content(primitives_, path, bytes);
}

Result<std::unique_ptr<ReplacementFile>> Win32FileSystem::begin_replace(const std::string& path) {
    return begin_replacement(primitives_, path);
}

Status Win32FileSystem::copy_file(const std::string& from, const std::string& to,
                                  const CopyControl& control) {
    return copy_through_temp(primitives_, from, to, control);
}

}  // namespace quiller::win32
