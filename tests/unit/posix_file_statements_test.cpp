// The progress window of an animated copy, on real files through the engine: what no script test
// can see (listings and warnings are in tests/scripts/fileops_*.prg).
#include <gtest/gtest.h>

#include "bindings/language.hpp"
#include "engine/engine.hpp"
#include "scratch_folder.hpp"

namespace quiller {
namespace {

namespace fs = std::filesystem;

// Records what the engine shows; cancels the progress window after `cancel_after` updates.
class RecordingHost final : public Host {
  public:
    std::vector<std::string> errors;
    std::vector<std::string> progress;  // "show TITLE UNIT", "N/M", "close"
    int cancel_after = -1;

    void output_printed(const OutputModel&, std::string_view) override {}
    void output_pause(const OutputModel&, std::string_view) override {}
    void output_finished(const OutputModel&) override {}
    std::string ask(const Question& q) override { return q.default_answer; }
    ErrorChoice show_error(Severity, std::string_view, std::string_view text) override {
        errors.emplace_back(text);
        return ErrorChoice::Continue;
    }
    std::string choose_script(std::string_view, std::string_view, std::string_view) override {
        return {};
    }
    MessageBoxResult message_box(std::string_view, std::string_view, MessageBoxButtons) override {
        return MessageBoxResult::Ok;
    }
    DebugAction debug_stop(const DebugView&) override { return DebugAction::Step; }
    void progress_show(std::string_view title, std::string_view unit) override {
        progress.push_back("show " + std::string(title) + " " + std::string(unit));
    }
    void progress_update(const ProgressModel& m) override {
        progress.push_back(std::to_string(m.done) + "/" + std::to_string(m.total));
    }
    void progress_close() override { progress.push_back("close"); }
    bool progress_cancelled() override {
        return cancel_after >= 0 && static_cast<int>(progress.size()) > cancel_after;
    }
};

class FileOperationStatements : public testing::ScratchFolder {
  protected:
    void SetUp() override {
        ScratchFolder::SetUp();
        tmp.emplace("TMPDIR", path(""));  // the error log goes there
    }
    // Runs the lines as the body of main, with the scratch directory as $param[1]$.
    void run(const std::string& body) {
        write("job.prg", "sub main\n" + body + "endsub\n");
        Platform platform = make_platform();
        Engine engine(host, platform, standard_language());
        engine.run((dir / "job.prg").string() + " " + dir.string());
    }

    std::optional<testing::ScopedEnv> tmp;
    RecordingHost host;
};

TEST_F(FileOperationStatements, AnAnimatedCopyStepsOncePerFileAndCanBeCancelled) {
    for (const char* name : {"src/a.txt", "src/b.txt", "src/c.txt", "src/d.log"}) write(name, "x");
    fs::create_directory(dir / "dst");
    fs::create_directory(dir / "cancelled");
    run("copy $param[1]$/src/a.txt $param[1]$/dst\n");  // not animated: no window
    EXPECT_TRUE(host.progress.empty());
    run("copy $param[1]$/src/*.txt $param[1]$/dst {animated}\n");
    EXPECT_EQ(host.progress, (std::vector<std::string>{"show Copying files", "0/3", "1/3", "2/3",
                                                       "3/3", "close"}));
    EXPECT_TRUE(host.errors.empty());
    EXPECT_TRUE(fs::exists(dir / "dst/c.txt"));
    EXPECT_FALSE(fs::exists(dir / "dst/d.log"));

    host.progress.clear();
    host.cancel_after = 2;  // after the first file
    run("copy $param[1]$/src/*.txt $param[1]$/cancelled {animated}\n");
    EXPECT_EQ(host.progress.back(), "close");
    EXPECT_TRUE(fs::exists(dir / "cancelled/a.txt"));
    EXPECT_FALSE(fs::exists(dir / "cancelled/b.txt"));
    ASSERT_EQ(host.errors.size(), 1u);
    EXPECT_NE(host.errors[0].find("(copy) Cancelled after 1 of 3 files"), std::string::npos);
}

}  // namespace
}  // namespace quiller
