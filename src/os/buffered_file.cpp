#include "os/buffered_file.hpp"

#include <cstring>

namespace quiller {
namespace {

constexpr std::size_t kReadBuffer = 128 * 1024;

// The first CR or LF in [p, p + n), or nullptr. LF is searched with memchr; a CR only matters
// before it, so CR-free lines cost one fast scan.
const char* find_line_end(const char* p, std::size_t n) {
    const auto* lf = static_cast<const char*>(std::memchr(p, '\n', n));
    const std::size_t span = lf ? static_cast<std::size_t>(lf - p) : n;
    const auto* cr = static_cast<const char*>(std::memchr(p, '\r', span));
    return cr ? cr : lf;
}

}  // namespace

bool BufferedFile::read_line(std::string& line) {
    line.clear();
    bool any = false;
    for (;;) {
        if (pos_ == size_ && !refill()) return any;
        if (skip_lf_) {
            skip_lf_ = false;
            if (buffer_[pos_] == '\n') {
                ++pos_;
                continue;
            }
        }
        any = true;
        const char* start = buffer_.get() + pos_;
        const char* end = find_line_end(start, size_ - pos_);
        if (!end) {
            line.append(start, size_ - pos_);
            pos_ = size_;
            continue;
        }
        line.append(start, static_cast<std::size_t>(end - start));
        pos_ = static_cast<std::size_t>(end - buffer_.get()) + 1;
        if (*end == '\r') take_lf_after_cr();
        return true;
    }
}

void BufferedFile::take_lf_after_cr() {
    if (pos_ < size_) {
        if (buffer_[pos_] == '\n') ++pos_;
    } else {
        skip_lf_ = true;
    }
}

bool BufferedFile::refill() {
    if (closed_) return false;
    if (!buffer_) buffer_ = std::make_unique<char[]>(kReadBuffer);
    const Result<std::size_t> n = file_->read(buffer_.get(), kReadBuffer);
    size_ = n ? *n : 0;
    pos_ = 0;
    return size_ > 0;
}

Status BufferedFile::write(std::string_view bytes) {
    return file_->write(bytes);
}

Status BufferedFile::close() {
    if (closed_) return {};
    closed_ = true;
    return file_->close();
}

}  // namespace quiller
