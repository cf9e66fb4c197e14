// Open files and the path operations the shared file code is built on, on POSIX.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "os/raw_file.hpp"
#include "os/system_error.hpp"

namespace quiller::posix {

// The error for an errno value, with its message.
SystemError system_error(int code);

// A file descriptor, closed on destruction.
class PosixRawFile final : public RawFile {
  public:
    PosixRawFile(int fd, std::string path) : fd_(fd), path_(std::move(path)) {}
    // A source keeps the status it was opened with, for the identity check and the stamp.
    PosixRawFile(int fd, std::string path, const struct stat& status)
        : fd_(fd), path_(std::move(path)), status_(status) {}
    ~PosixRawFile() override { close(); }

    Result<std::size_t> read(char* buffer, std::size_t size) override;
    Status write(std::string_view bytes) override;
    Status flush() override;
    Status take_stamp(RawFile& source) override;
    bool is(const std::string& path) override;
    Status close() override;
    // The status as opened, or the present one.
    bool status(struct stat& st) const;

  private:
    int fd_;
    std::string path_;  // as opened, for the extended attributes
    std::optional<struct stat> status_;
};

class PosixPrimitives final : public FilePrimitives {
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

}  // namespace quiller::posix
