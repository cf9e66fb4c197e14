// The executor on a real folder: failures stay with their action and the run goes on; a copy
// that can't be finished leaves the old file and no temporary; the listing after the run is what
// a scan would find.
#include <gtest/gtest.h>

#include <cerrno>

#include "os/posix/posix_platform.hpp"
#include "scratch_folder.hpp"
#include "sync/executor.hpp"
#include "sync/sort.hpp"

namespace quiller::sync {
namespace {

namespace fs = std::filesystem;

// Copies until `budget` files are written, then reports a full disk.
class FullDisk final : public posix::PosixFileSystem {
  public:
    explicit FullDisk(int budget) : budget_(budget) {}
    Status copy_file(const std::string& from, const std::string& to,
                     const CopyControl& control) override {
        if (budget_-- > 0) return PosixFileSystem::copy_file(from, to, control);
        return posix::system_error(ENOSPC);
    }

  private:
    int budget_;
};

struct Ended {
    std::string kind, path;
    int error;
};

class Recorder final : public ExecutionObserver {
  public:
    void action_ended(const Action& a, std::string_view path, const Status& outcome) override {
        ended.push_back({std::string(kind_name(a.kind)), std::string(path),
                         outcome.ok() ? 0 : outcome.error().code});
    }
    void between_actions(std::int64_t, std::string_view) override {}
    std::vector<Ended> ended;
};

class SyncExecutor : public testing::ScratchFolder {
  protected:
    void SetUp() override {
        ScratchFolder::SetUp();
        fs::create_directories(dir / "src");
        fs::create_directories(dir / "dst");
    }
    // A file of `text` on disk and its record in `l` ("/" ends a folder).
    void entry(Listing& l, const std::string& side, const std::string& name,
               const std::string& text = {}, bool on_disk = true) {
        const fs::path p = dir / side / name;
        const bool folder = name.back() == '/';
        if (on_disk && folder) fs::create_directories(p);
        if (on_disk && !folder) write(side + "/" + name, text);
        l.add(folder ? name.substr(0, name.size() - 1) : name, 45000 + text.size(),
              folder ? std::int16_t{kAttrDirectory} : std::int16_t{kAttrArchive},
              static_cast<std::int64_t>(text.size()));
    }
    std::vector<Ended> run(Listing& s, Listing& t, FileSystem& files, Listing* after = nullptr) {
        sort_listing(s);
        sort_listing(t);
        const std::string sroot = (dir / "src").string(), troot = (dir / "dst").string();
        const ActionList list = compute_actions({s, sroot}, {t, troot}, {});
        Recorder recorder;
        Executor x({s, sroot}, {t, troot}, files, recorder);
        x.run(list, true);
        if (after) *after = x.target_after(list);
        return recorder.ended;
    }

    std::unique_ptr<FileSystem> files_ = make_file_system();
};

TEST_F(SyncExecutor, FailuresStayWithTheirActionAndTheRunGoesOn) {
    Listing s, t;
    entry(s, "src", "gone.txt", "vanished between scan and copy", false);
    entry(t, "dst", "full/");
    write("dst/full/kept.txt", "k");  // not in the listing: the folder stays
    entry(s, "src", "z.txt", "last");
    const auto ended = run(s, t, *files_);
    ASSERT_EQ(ended.size(), 3u);
    EXPECT_EQ(ended[0].kind + std::to_string(ended[0].error), "rd" + std::to_string(ENOTEMPTY));
    EXPECT_EQ(ended[1].kind + ended[1].path.substr(dir.string().size()), "copy/dst/gone.txt");
    EXPECT_EQ(ended[1].error, ENOENT);
    EXPECT_EQ(content("dst/z.txt"), "last");
    EXPECT_TRUE(exists("dst/full/kept.txt"));
}

TEST_F(SyncExecutor, AFullDiskKeepsTheOldFileAndLeavesNoTemporary) {
    Listing s, t;
    entry(s, "src", "a.txt", "new a");
    entry(s, "src", "b.txt", "new b!");
    entry(t, "dst", "b.txt", "old b");
    FullDisk disk(1);
    const auto ended = run(s, t, disk);
    ASSERT_EQ(ended.size(), 2u);
    EXPECT_EQ(ended[1].error, ENOSPC);
    EXPECT_EQ(content("dst/a.txt"), "new a");
    EXPECT_EQ(content("dst/b.txt"), "old b");
    for (const auto& e : fs::directory_iterator(dir / "dst"))
        EXPECT_FALSE(is_temporary_name(e.path().filename().string())) << e.path();
}

TEST_F(SyncExecutor, RenamesNeverOverwriteAndTheListingAfterMatchesTheDisk) {
    Listing s, t, after;
    entry(s, "src", "Docs/");
    entry(s, "src", "Docs/Note.txt", "n");
    entry(s, "src", "Docs/new.txt", "fresh");
    entry(t, "dst", "docs/");
    entry(t, "dst", "docs/note.txt", "n");
    run(s, t, *files_, &after);
    EXPECT_EQ(content("dst/Docs/Note.txt"), "n");
    EXPECT_EQ(content("dst/Docs/new.txt"), "fresh");
    std::vector<std::string> names;
    for (std::size_t k = 0; k < after.order.size(); ++k) names.emplace_back(after.sorted_name(k));
    EXPECT_EQ(names, (std::vector<std::string>{"Docs", "Docs/new.txt", "Docs/Note.txt"}));
    EXPECT_TRUE(is_temporary_name(".~qlsync-0123456789ab.tmp"));
    EXPECT_FALSE(is_temporary_name(".~qlsync-.tmp"));
}

}  // namespace
}  // namespace quiller::sync
