// The shared replace-and-copy helper over in-memory primitives: temporary names, progress,
// cancel, and that an unfinished write never reaches the target nor leaves a temporary file.
#include <gtest/gtest.h>

#include <map>

#include "os/atomic_replace.hpp"

namespace quiller::testing {
namespace {

struct MemoryPrimitives;

class MemoryRawFile final : public RawFile {
  public:
    MemoryRawFile(MemoryPrimitives& disk, std::string path) : disk_(disk), path_(std::move(path)) {}
    Result<std::size_t> read(char* buffer, std::size_t size) override;
    Status write(std::string_view bytes) override;
    Status flush() override { return {}; }
    Status take_stamp(RawFile&) override { return {}; }
    bool is(const std::string& path) override { return path == path_; }
    Status close() override { return {}; }

  private:
    MemoryPrimitives& disk_;
    std::string path_;
    std::size_t pos_ = 0;
};

struct MemoryPrimitives final : FilePrimitives {
    std::map<std::string, std::string> files;
    int taken_names = 0;  // how many temporary names are reported as taken

    Result<std::string> replaceable(const std::string& path, bool, RawFile* source) override {
        if (source && source->is(path)) return same_file();
        return path;
    }
    Result<std::unique_ptr<RawFile>> open_source(const std::string& path) override {
        if (!files.count(path)) return SystemError{2, "not found", ErrorKind::NotFound};
        return std::unique_ptr<RawFile>(std::make_unique<MemoryRawFile>(*this, path));
    }
    Result<std::unique_ptr<RawFile>> create_new(const std::string& path,
                                                const std::string&) override {
        if (taken_names-- > 0 || files.count(path))
            return SystemError{17, "taken", ErrorKind::Exists};
        files[path];
        return std::unique_ptr<RawFile>(std::make_unique<MemoryRawFile>(*this, path));
    }
    Status rename_over(const std::string& from, const std::string& to, bool) override {
        files[to] = files[from];
        files.erase(from);
        return {};
    }
    void discard(const std::string& path) override { files.erase(path); }
    SystemError cancelled() override { return {125, "cancelled", ErrorKind::Cancelled}; }
    SystemError same_file() override { return {22, "same file"}; }
    int process_id() override { return 7; }
};

Result<std::size_t> MemoryRawFile::read(char* buffer, std::size_t size) {
    const std::string& bytes = disk_.files[path_];
    const std::size_t n = std::min(size, bytes.size() - pos_);
    bytes.copy(buffer, n, pos_);
    pos_ += n;
    return n;
}

Status MemoryRawFile::write(std::string_view bytes) {
    disk_.files[path_] += bytes;
    return {};
}

TEST(AtomicReplace, TemporaryNamesAreRecognisableAndBesideTheTarget) {
    EXPECT_EQ(temp_name_beside("C:\\d\\a.ini", 12, 3), "C:\\d\\.a.ini.quiller-tmp-12-3");
    EXPECT_EQ(temp_name_beside("/d/a.ini", 12, 3), "/d/.a.ini.quiller-tmp-12-3");
    EXPECT_EQ(temp_name_beside("a.ini", 1, 0), ".a.ini.quiller-tmp-1-0");
}

TEST(AtomicReplace, ReplacesOnlyOnCommitAndTriesFurtherNames) {
    MemoryPrimitives disk;
    disk.files["/d/a.ini"] = "old";
    disk.taken_names = 2;
    {
        auto r = begin_replacement(disk, "/d/a.ini");
        ASSERT_TRUE(r);
        ASSERT_TRUE((*r)->write("new"));
        EXPECT_EQ(disk.files["/d/a.ini"], "old");
    }  // abandoned
    EXPECT_EQ(disk.files.size(), 1u);
    EXPECT_EQ(disk.files["/d/a.ini"], "old");
    ASSERT_TRUE(replace_content(disk, "/d/a.ini", "new"));
    EXPECT_EQ(disk.files, (std::map<std::string, std::string>{{"/d/a.ini", "new"}}));
}

TEST(AtomicReplace, CopiesInBlocksWithProgressAndStopsWhenCancelled) {
    MemoryPrimitives disk;
    disk.files["/s/big"] = std::string(600 * 1024, 'x');
    disk.files["/t/big"] = "old";
    std::vector<std::int64_t> seen;
    CopyControl control;
    control.progress = [&](std::int64_t done) { seen.push_back(done); };
    control.cancelled = [&] { return seen.size() == 1; };
    const Status stopped = copy_through_temp(disk, "/s/big", "/t/big", control);
    ASSERT_FALSE(stopped);
    EXPECT_EQ(stopped.error().kind, ErrorKind::Cancelled);
    EXPECT_EQ(disk.files["/t/big"], "old");
    EXPECT_EQ(disk.files.size(), 2u);

    seen.clear();
    control.cancelled = nullptr;
    ASSERT_TRUE(copy_through_temp(disk, "/s/big", "/t/big", control));
    EXPECT_EQ(seen, (std::vector<std::int64_t>{262144, 524288, 614400}));
    EXPECT_EQ(disk.files["/t/big"], disk.files["/s/big"]);
    EXPECT_EQ(disk.files.size(), 2u);
    EXPECT_EQ(copy_through_temp(disk, "/s/big", "/s/big").error().code, 22);
    EXPECT_EQ(copy_through_temp(disk, "/s/none", "/t/x").error().kind, ErrorKind::NotFound);
}

}  // namespace
}  // namespace quiller::testing
