// Open files and the path operations the shared file code is built on, on Win32.
#pragma once

#include <string>

#include "os/raw_file.hpp"
#include "os/system_error.hpp"
#include "os/win32/win32_handle.hpp"

namespace quiller::win32 {

// The error for a GetLastError code, with the system's message.
SystemError system_error(DWORD code);
// The error GetLastError reports now; call it right after the failed call.
SystemError last_system_error();

class Win32RawFile final : public RawFile {
  public:
    explicit Win32RawFile(FileHandle file) : file_(std::move(file)) {}

    Result<std::size_t> read(char* buffer, std::size_t size) override;
    Status write(std::string_view bytes) override;
    Status flush() override;
    Status take_stamp(RawFile& source) override;
    bool is(const std::string& path) override;
    Status close() override;

  private:
    FileHandle file_;
};

class Win32Primitives final : public FilePrimitives {
  public:
    Result<std::string> replaceable(const std::string& path, bool follow_link,
                                    RawFile* source) override;
    Result<std::unique_ptr<RawFile>> open_source(const std::string& path) override;
    Result<std::unique_ptr<RawFile>> create_new(const std::string& path,
                                                const std::string& like) override;
    Status rename_over(const std::string& from, const std::string& to, bool durable) override;
    void discard(const std::string& path) override;
    SystemError cancelled() override;
    SystemError same_file() override;
    int process_id() override;
};

}  // namespace quiller::win32
