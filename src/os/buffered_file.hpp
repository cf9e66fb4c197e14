// The one line reader: a file a script opened, read through a buffer and cut into lines at
// CR LF, LF or CR, over the platform's raw reads. Writes go straight through, so other
// functions (filesize, replacestringinfile) see them at once and nothing is lost when the
// process ends abruptly.
#pragma once

#include <memory>
#include <string>

#include "os/platform.hpp"
#include "os/raw_file.hpp"

namespace quiller {

class BufferedFile final : public OpenFile {
  public:
    explicit BufferedFile(std::unique_ptr<RawFile> file) : file_(std::move(file)) {}
    ~BufferedFile() override { close(); }

    bool read_line(std::string& line) override;
    Status write(std::string_view bytes) override;
    Status close() override;

  private:
    bool refill();
    void take_lf_after_cr();

    std::unique_ptr<RawFile> file_;
    bool closed_ = false;
    std::unique_ptr<char[]> buffer_;
    std::size_t size_ = 0;
    std::size_t pos_ = 0;
    bool skip_lf_ = false;  // the LF of a CR LF split across two reads is still to come
};

}  // namespace quiller
