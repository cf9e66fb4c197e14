// The file statements through the engine, on real files: the progress window of an animated
// copy, listings in the output window, and one warning per statement.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "engine/engine.hpp"

namespace quiller {
namespace {

namespace fs = std::filesystem;

// Records what the engine shows; cancels the progress window after `cancel_after` updates.
class RecordingHost final : public Host {
  public:
    std::vector<std::string> printed;
    std::vector<std::string> errors;
    std::vector<std::string> progress;  // "show TITLE UNIT", "N/M", "close"
    int cancel_after = -1;

    void output_printed(const OutputModel&, std::string_view text) override {
        printed.emplace_back(text);
    }
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

class FileOperationStatements : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = fs::temp_directory_path() / "quiller-fstm-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        dir = fs::canonical(pattern);
        const char* tmp = std::getenv("TMPDIR");
        saved_tmp = tmp ? std::optional<std::string>(tmp) : std::nullopt;
        ::setenv("TMPDIR", (dir.string() + "/").c_str(), 1);
    }
    void TearDown() override {
        if (saved_tmp)
            ::setenv("TMPDIR", saved_tmp->c_str(), 1);
        else
            ::unsetenv("TMPDIR");
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
    void write(const std::string& name, const std::string& bytes) const {
        fs::create_directories((dir / name).parent_path());
        std::ofstream(dir / name, std::ios::binary) << bytes;
    }
    // Runs the lines as the body of main, with the scratch directory as $param[1]$.
    void run(const std::string& body) {
        write("job.prg", "sub main\n" + body + "endsub\n");
        Platform platform = make_platform();
        Engine engine(host, platform);
        engine.run((dir / "job.prg").string() + " " + dir.string());
    }

    fs::path dir;
    std::optional<std::string> saved_tmp;
    RecordingHost host;
};

TEST_F(FileOperationStatements, AnAnimatedCopyStepsOncePerFile) {
    for (const char* name : {"src/a.txt", "src/b.txt", "src/c.txt", "src/d.log"}) write(name, "x");
    fs::create_directory(dir / "dst");
    run("copy $param[1]$/src/*.txt $param[1]$/dst {animated}\n");
    const std::vector<std::string> expected{
        "show Copying files", "0/3", "1/3", "2/3", "3/3", "close"};
    EXPECT_EQ(host.progress, expected);
    EXPECT_TRUE(host.errors.empty());
    EXPECT_TRUE(fs::exists(dir / "dst/c.txt"));
    EXPECT_FALSE(fs::exists(dir / "dst/d.log"));
}

TEST_F(FileOperationStatements, ACopyWithoutAnimationShowsNoProgress) {
    write("src/a.txt", "x");
    fs::create_directory(dir / "dst");
    run("copy $param[1]$/src/a.txt $param[1]$/dst\n");
    EXPECT_TRUE(host.progress.empty());
    EXPECT_TRUE(fs::exists(dir / "dst/a.txt"));
}

TEST_F(FileOperationStatements, CancellingStopsTheCopyCleanly) {
    for (const char* name : {"src/a.txt", "src/b.txt", "src/c.txt"}) write(name, "x");
    fs::create_directory(dir / "dst");
    host.cancel_after = 2;  // after the first file
    run("copy $param[1]$/src/*.txt $param[1]$/dst {animated}\n");
    EXPECT_EQ(host.progress.back(), "close");
    EXPECT_TRUE(fs::exists(dir / "dst/a.txt"));
    EXPECT_FALSE(fs::exists(dir / "dst/b.txt"));
    ASSERT_EQ(host.errors.size(), 1u);
    EXPECT_NE(host.errors[0].find("(copy) Cancelled after 1 of 3 files"), std::string::npos);
}

TEST_F(FileOperationStatements, ListingsGoToTheOutputWindowSorted) {
    write("d/b.txt", "12");
    write("d/A.txt", "1");
    write("d/sub/c.txt", "123");
    run("dir $param[1]$/d {sub}\ndir $param[1]$/d {dirsonly}\n");
    ASSERT_EQ(host.printed.size(), 5u);
    EXPECT_TRUE(host.printed[0].ends_with("                 1 A.txt"));
    EXPECT_TRUE(host.printed[1].ends_with("                 2 b.txt"));
    EXPECT_TRUE(host.printed[2].ends_with("    <DIR>          sub"));
    EXPECT_TRUE(host.printed[3].ends_with("                 3 sub/c.txt"));
    EXPECT_TRUE(host.printed[4].ends_with("    <DIR>          sub"));
}

TEST_F(FileOperationStatements, OneWarningForManyProblems) {
    for (const char* name : {"a.txt", "b.txt", "c.txt"}) write("d/" + std::string(name), "x");
    for (const char* name : {"a.txt", "b.txt"})
        fs::permissions(dir / "d" / name, fs::perms::owner_read);
    run("del $param[1]$/d/*.txt\n");
    ASSERT_EQ(host.errors.size(), 1u);
    EXPECT_NE(host.errors[0].find("From Quiller : (del) '" + dir.string() +
                                  "/d/a.txt' is read-only and was not deleted (and 1 more)"),
              std::string::npos);
    EXPECT_TRUE(fs::exists(dir / "d/a.txt"));
    EXPECT_FALSE(fs::exists(dir / "d/c.txt"));
}

TEST_F(FileOperationStatements, QuietMdShowsNoErrorButLogsIt) {
    write("file", "x");
    run("md $param[1]$/file {quiet}\nmd $param[1]$/file\n");
    EXPECT_EQ(host.errors.size(), 1u);
    std::ifstream log(dir / "ql_err.txt");
    const std::string text{std::istreambuf_iterator<char>(log), {}};
    const std::string message = "(md) '" + dir.string() + "/file' exists and is not a directory";
    const std::size_t first = text.find(message);
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(text.find(message, first + 1), std::string::npos);
}

}  // namespace
}  // namespace quiller
