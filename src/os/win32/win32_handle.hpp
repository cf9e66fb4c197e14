// Owning wrappers for Win32 handles.
#pragma once

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <cstdint>
#include <utility>

namespace quiller::win32 {

// A file handle from CreateFileW; closed on destruction.
class FileHandle {
  public:
    FileHandle() = default;
    explicit FileHandle(HANDLE h) : h_(h) {}
    FileHandle(FileHandle&& o) noexcept : h_(std::exchange(o.h_, INVALID_HANDLE_VALUE)) {}
    FileHandle& operator=(FileHandle&& o) noexcept {
        if (this != &o) {
            close();
            h_ = std::exchange(o.h_, INVALID_HANDLE_VALUE);
        }
        return *this;
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() { close(); }

    bool valid() const { return h_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return h_; }
    // Closes the handle; false when closing failed.
    bool close() {
        if (!valid()) return true;
        const bool ok = CloseHandle(h_) != 0;
        h_ = INVALID_HANDLE_VALUE;
        return ok;
    }

  private:
    HANDLE h_ = INVALID_HANDLE_VALUE;
};

// A search handle from FindFirstFileExW; closed on destruction.
class FindHandle {
  public:
    explicit FindHandle(HANDLE h) : h_(h) {}
    FindHandle(const FindHandle&) = delete;
    FindHandle& operator=(const FindHandle&) = delete;
    ~FindHandle() {
        if (valid()) FindClose(h_);
    }
    bool valid() const { return h_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return h_; }

  private:
    HANDLE h_;
};

// Writes all bytes; false on failure.
inline bool write_all(HANDLE h, const char* data, std::size_t size) {
    while (size > 0) {
        const DWORD chunk = size > 0x40000000 ? 0x40000000 : static_cast<DWORD>(size);
        DWORD written = 0;
        if (!WriteFile(h, data, chunk, &written, nullptr) || written == 0) return false;
        data += written;
        size -= written;
    }
    return true;
}

// A file time as seconds since 1970-01-01 UTC, rounded towards minus infinity so that times
// before 1970 stay in their own second.
inline std::int64_t unix_seconds(const FILETIME& t) {
    constexpr std::int64_t kUnixEpochTicks = 116444736000000000LL;  // 1601 to 1970, in 100 ns
    const std::int64_t ticks =
        (static_cast<std::int64_t>(t.dwHighDateTime) << 32) | t.dwLowDateTime;
    const std::int64_t since = ticks - kUnixEpochTicks;
    return since >= 0 ? since / 10000000 : -((-since + 9999999) / 10000000);
}

}  // namespace quiller::win32
