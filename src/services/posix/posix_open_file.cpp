// Files opened by scripts, temporary files and atomic replacement on POSIX.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>

#include "services/posix/posix_platform.hpp"

namespace quiller::posix {
namespace {

bool write_all(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

// A buffered file descriptor: lines are cut from a read buffer; writes go straight through.
class PosixOpenFile final : public OpenFile {
  public:
    explicit PosixOpenFile(int fd) : fd_(fd) {}
    ~PosixOpenFile() override { close(); }

    bool read_line(std::string& line) override {
        line.clear();
        bool partial = false;  // part of a last line without line end was read
        for (;;) {
            if (pos_ == buffer_.size() && !refill()) return partial;
            if (skip_lf_) {  // the LF of a CR LF split across two reads
                skip_lf_ = false;
                if (buffer_[pos_] == '\n' && ++pos_ == buffer_.size()) continue;
            }
            const std::size_t end = buffer_.find_first_of("\r\n", pos_);
            if (end == std::string::npos) {
                line.append(buffer_, pos_, std::string::npos);
                pos_ = buffer_.size();
                partial = true;
                continue;
            }
            line.append(buffer_, pos_, end - pos_);
            pos_ = end + 1;
            if (buffer_[end] == '\r') {
                if (pos_ < buffer_.size()) {
                    if (buffer_[pos_] == '\n') ++pos_;
                } else {
                    skip_lf_ = true;
                }
            }
            return true;
        }
    }

    bool write(std::string_view bytes) override { return fd_ >= 0 && write_all(fd_, bytes); }

    bool close() override {
        if (fd_ < 0) return true;
        const bool ok = ::close(fd_) == 0;
        fd_ = -1;
        return ok;
    }

  private:
    bool refill() {
        if (fd_ < 0) return false;
        buffer_.resize(65536);
        ssize_t n;
        do n = ::read(fd_, buffer_.data(), buffer_.size());
        while (n < 0 && errno == EINTR);
        buffer_.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
        pos_ = 0;
        return !buffer_.empty();
    }

    int fd_;
    std::string buffer_;
    std::size_t pos_ = 0;
    bool skip_lf_ = false;
};

}  // namespace

std::unique_ptr<OpenFile> PosixFileSystem::open(const std::string& path, OpenMode mode,
                                                int& error) {
    int flags = O_CLOEXEC;
    switch (mode) {
        case OpenMode::Read:
            flags |= O_RDONLY;
            break;
        case OpenMode::Write:
            flags |= O_WRONLY | O_CREAT | O_TRUNC;
            break;
        case OpenMode::Append:
            flags |= O_WRONLY | O_CREAT | O_APPEND;
            break;
    }
    const std::string p = native_path(path);
    const int fd = ::open(p.c_str(), flags, 0644);
    if (fd < 0) {
        error = errno;
        return nullptr;
    }
    struct stat st {};
    if (::fstat(fd, &st) == 0 && S_ISDIR(st.st_mode)) {
        ::close(fd);
        error = EISDIR;
        return nullptr;
    }
    return std::make_unique<PosixOpenFile>(fd);
}

bool PosixFileSystem::replace_file(const std::string& path, std::string_view bytes, int& error) {
    const std::string p = native_path(path);
    struct stat st {};
    const bool existed = ::stat(p.c_str(), &st) == 0;
    std::string temp = p + ".XXXXXX";
    const int fd = ::mkstemp(temp.data());
    if (fd < 0) {
        error = errno;
        return false;
    }
    bool ok = write_all(fd, bytes) && ::fsync(fd) == 0;
    if (existed) ::fchmod(fd, st.st_mode & 07777);
    ok = ::close(fd) == 0 && ok;
    if (ok && ::rename(temp.c_str(), p.c_str()) == 0) return true;
    error = errno ? errno : EIO;
    ::unlink(temp.c_str());
    return false;
}

std::string PosixFileSystem::temp_file_name(const std::string& prefix, bool create) {
    PosixEnvironment env;
    const std::string dir = env.temp_dir();
    const std::string stem = prefix.substr(0, 3);
    static std::mt19937 rng(static_cast<unsigned>(::getpid()) ^
                            static_cast<unsigned>(::time(nullptr)));
    for (int attempt = 0; attempt < 65536; ++attempt) {
        char hex[8];
        std::snprintf(hex, sizeof hex, "%X", static_cast<unsigned>(rng() & 0xFFFF));
        const std::string name = dir + stem + hex + ".tmp";
        const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (fd < 0) {
            if (errno == EEXIST) continue;
            return {};
        }
        ::close(fd);
        if (!create) ::unlink(name.c_str());
        return name;
    }
    return {};
}

}  // namespace quiller::posix
