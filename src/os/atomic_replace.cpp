// The temporary-file dance of every whole-file writer, over the platform's primitives.
#include "os/atomic_replace.hpp"

#include <atomic>
#include <memory>
#include <utility>

#include "os/file_lock.hpp"

namespace quiller {
namespace {

constexpr std::size_t kCopyBlock = 256 * 1024;
constexpr unsigned kNameAttempts = 100;

// Told apart from each other across threads and replacements of one process.
std::atomic<unsigned> temp_counter{0};

}  // namespace

ReplacementFile::ReplacementFile(FilePrimitives& platform, std::unique_ptr<RawFile> file,
                                 std::string temp, std::string target, bool flush)
    : platform_(platform),
      file_(std::move(file)),
      temp_(std::move(temp)),
      target_(std::move(target)),
      flush_(flush) {}

ReplacementFile::~ReplacementFile() {
    if (committed_) return;
    file_->close();
    platform_.discard(temp_);
}

Status ReplacementFile::write(std::string_view bytes) {
    return file_->write(bytes);
}

Status ReplacementFile::commit() {
    Status s = flush_ ? file_->flush() : Status();
    if (Status closed = file_->close(); s && !closed) s = closed;
    if (s) s = platform_.rename_over(temp_, target_, flush_);
    committed_ = s.ok();
    return s;
}

std::string temp_name_beside(const std::string& target, int pid, unsigned n) {
    const std::size_t slash = target.find_last_of("/\\");
    const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
    return target.substr(0, start) + "." + target.substr(start) + kTempMarker +
           std::to_string(pid) + "-" + std::to_string(n);
}

namespace {

Result<std::unique_ptr<ReplacementFile>> begin(FilePrimitives& platform, const std::string& path,
                                               const CopyControl& how, RawFile* source) {
    Result<std::string> target = platform.replaceable(path, !how.replace_name, source);
    if (!target) return target.error();
    for (unsigned attempt = 0;; ++attempt) {
        std::string temp = how.temp_name
                               ? how.temp_name(*target)
                               : temp_name_beside(*target, platform.process_id(), temp_counter++);
        // A copy into a tree of the caller's own takes everything from its source.
        auto file = platform.create_new(temp, how.replace_name ? std::string() : *target);
        if (file)
            return std::make_unique<ReplacementFile>(platform, std::move(*file), std::move(temp),
                                                     std::move(*target), how.flush);
        if (file.error().kind != ErrorKind::Exists || attempt + 1 == kNameAttempts)
            return file.error();
    }
}

}  // namespace

Result<std::unique_ptr<ReplacementFile>> begin_replacement(FilePrimitives& platform,
                                                           const std::string& path) {
    return begin(platform, path, {}, nullptr);
}

Status replace_content(FilePrimitives& platform, const std::string& path, std::string_view bytes) {
    auto replacement = begin_replacement(platform, path);
    if (!replacement) return replacement.error();
    if (Status s = (*replacement)->write(bytes); !s) return s;
    return (*replacement)->commit();
}

namespace {

// The blocks of `in` to `out`, reporting and asking between blocks.
Status copy_blocks(FilePrimitives& platform, RawFile& in, ReplacementFile& out,
                   const CopyControl& control) {
    // One buffer for all copies: a mirror copies many small files.
    thread_local const std::unique_ptr<char[]> buffer(new char[kCopyBlock]);
    std::int64_t done = 0;
    for (;;) {
        if (control.cancelled && control.cancelled()) return platform.cancelled();
        Result<std::size_t> n = in.read(buffer.get(), kCopyBlock);
        if (!n) return n.error();
        if (*n == 0) return {};
        if (Status s = out.write({buffer.get(), *n}); !s) return s;
        done += static_cast<std::int64_t>(*n);
        if (control.progress) control.progress(done);
    }
}

}  // namespace

Status copy_through_temp(FilePrimitives& platform, const std::string& from, const std::string& to,
                         const CopyControl& control) {
    auto source = platform.open_source(from);
    if (!source) return source.error();
    auto target = begin(platform, to, control, source->get());
    if (!target) return target.error();
    ReplacementFile& out = **target;
    if (Status s = copy_blocks(platform, **source, out, control); !s) return s;
    if (Status s = out.file().take_stamp(**source); !s) return s;
    return out.commit();
}

}  // namespace quiller
