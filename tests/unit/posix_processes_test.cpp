// The POSIX processes service on real programs in a scratch directory: waiting and not waiting,
// programs that can't be found, reaping, the document opener, and shutdown, which is only ever
// tried with QUILLER_SHUTDOWN_LOG set and a spawner that starts nothing.
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "services/posix/posix_processes.hpp"

namespace quiller::testing {
namespace {

namespace fs = std::filesystem;
using posix::PosixProcesses;

// Sets (or, with nothing, unsets) an environment variable for one scope.
class ScopedEnv {
  public:
    ScopedEnv(const char* name, const std::optional<std::string>& value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        if (value)
            ::setenv(name, value->c_str(), 1);
        else
            ::unsetenv(name);
    }
    ~ScopedEnv() {
        if (old_)
            ::setenv(name_, old_->c_str(), 1);
        else
            ::unsetenv(name_);
    }

  private:
    const char* name_;
    std::optional<std::string> old_;
};

class PosixProcessesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = fs::temp_directory_path() / "quiller-proc-XXXXXX";
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        dir = pattern;
    }
    void TearDown() override {
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
    std::string path(const std::string& name) const { return (dir / name).string(); }
    std::string content(const std::string& name) const {
        std::ifstream in(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    void write(const std::string& name, const std::string& bytes, bool executable = false) const {
        std::ofstream(path(name), std::ios::binary) << bytes;
        if (executable) ::chmod(path(name).c_str(), 0755);
    }
    // Waits up to 10 s for a file to get content.
    std::string await(const std::string& name) const {
        for (int i = 0; i < 200 && content(name).empty(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        return content(name);
    }

    fs::path dir;
};

TEST_F(PosixProcessesTest, WaitedCommandHasRunWhenItReturns) {
    PosixProcesses p;
    const auto id =
        p.shell_command("echo done > '" + path("out.txt") + "'", true, WindowState::Hidden);
    ASSERT_TRUE(id);
    EXPECT_GT(*id, 0u);
    EXPECT_EQ(content("out.txt"), "done\n");
}

TEST_F(PosixProcessesTest, UnwaitedCommandRunsOnItsOwn) {
    PosixProcesses p;
    // The program waits for a file the test creates, so it can't have finished before.
    const std::string command =
        "cd '" + dir.string() + "' && while [ ! -e go ]; do sleep 0.05; done; echo late > out.txt";
    const auto id = p.shell_command(command, false, WindowState::Normal);
    ASSERT_TRUE(id);
    EXPECT_FALSE(fs::exists(path("out.txt")));
    write("go", "");
    p.wait_for_process(*id);
    EXPECT_EQ(content("out.txt"), "late\n");
}

TEST_F(PosixProcessesTest, AWaitedProgramsExitStatusDoesNotMatter) {
    PosixProcesses p;
    EXPECT_TRUE(p.shell_command("exit 3", true, WindowState::Normal));
    EXPECT_TRUE(p.shell_command("false", true, WindowState::Normal));
}

TEST_F(PosixProcessesTest, MissingProgramsAreNotFound) {
    PosixProcesses p;
    write("data.txt", "not a program");
    for (bool wait : {true, false}) {
        EXPECT_FALSE(p.shell_command("quiller-no-such-program --help", wait, WindowState::Normal));
        EXPECT_FALSE(p.shell_command(path("missing") + " x", wait, WindowState::Normal));
        EXPECT_FALSE(p.shell_command(path("data.txt"), wait, WindowState::Normal));
        EXPECT_FALSE(p.shell_command(" \t", wait, WindowState::Normal));
        EXPECT_FALSE(p.shell_command("", wait, WindowState::Normal));
    }
    // Found by the shell's own lookup, as its exit status tells, when the first word can't say.
    EXPECT_FALSE(
        p.shell_command("cd / && quiller-no-such-program 2>/dev/null", true, WindowState::Normal));
}

TEST(PosixCommandFound, FirstWordOfTheCommandLine) {
    EXPECT_TRUE(posix::command_found("sh -c true"));
    EXPECT_TRUE(posix::command_found("  echo hi > out"));
    EXPECT_TRUE(posix::command_found("cd /tmp && ls"));
    EXPECT_TRUE(posix::command_found("'/bin/sh' -c true"));
    EXPECT_TRUE(posix::command_found("\"/bin/\"sh -c true"));
    EXPECT_TRUE(posix::command_found("/bin/sh"));
    EXPECT_TRUE(posix::command_found("X=1 quiller-no-such-program"));  // an assignment first
    EXPECT_TRUE(posix::command_found("$PROGRAM arg"));
    EXPECT_TRUE(posix::command_found("(quiller-no-such-program)"));
    EXPECT_TRUE(posix::command_found("if true; then :; fi"));
    EXPECT_FALSE(posix::command_found("quiller-no-such-program;echo"));
    EXPECT_FALSE(posix::command_found("'quiller no such program' x"));
    EXPECT_FALSE(posix::command_found("/no/such/program"));
    EXPECT_FALSE(posix::command_found("/bin"));  // a directory
    EXPECT_FALSE(posix::command_found(""));
}

TEST_F(PosixProcessesTest, FindProgramSearchesPath) {
    write("tool", "#!/bin/sh\n", true);
    write("plain", "data");
    ScopedEnv env("PATH", "/quiller/none::" + dir.string());
    EXPECT_EQ(posix::find_program("tool"), path("tool"));
    EXPECT_EQ(posix::find_program("plain"), std::nullopt);
    EXPECT_EQ(posix::find_program("sh"), std::nullopt);
    EXPECT_EQ(posix::find_program("/bin/sh"), "/bin/sh");
    EXPECT_EQ(posix::find_program(""), std::nullopt);
}

TEST_F(PosixProcessesTest, FinishedProgramsAreReaped) {
    PosixProcesses p;
    const auto id = p.shell_command("true", false, WindowState::Normal);
    ASSERT_TRUE(id);
    siginfo_t info{};
    ASSERT_EQ(::waitid(P_PID, *id, &info, WEXITED | WNOWAIT), 0);  // ended, not yet collected
    p.shell_command("true", true, WindowState::Normal);            // a later call sweeps
    errno = 0;
    EXPECT_EQ(::waitpid(static_cast<pid_t>(*id), nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
    p.wait_for_process(*id);  // ended and collected: returns at once
    p.wait_for_process(0);
}

TEST_F(PosixProcessesTest, OpenDocumentStartsXdgOpenWithoutWaiting) {
    write("xdg-open", "#!/bin/sh\necho \"$1\" > \"${0%/*}/opened.txt\"\n", true);
    ScopedEnv env("PATH", dir.string());
    PosixProcesses p;
    EXPECT_GE(p.open_document("https://example.org/a?b=c", "open"), kOpenFirstSuccess);
    EXPECT_EQ(await("opened.txt"), "https://example.org/a?b=c\n");
}

TEST_F(PosixProcessesTest, OpenDocumentArguments) {
    write("xdg-open", "#!/bin/sh\n", true);
    ScopedEnv env("PATH", dir.string());
    std::vector<std::string> seen;
    int result = 0;
    PosixProcesses p([&](const std::vector<std::string>& argv, pid_t&) {
        seen = argv;
        return result;
    });
    EXPECT_EQ(p.open_document("docs\\report.pdf", "open"), 42);
    EXPECT_EQ(seen, (std::vector<std::string>{path("xdg-open"), "docs/report.pdf"}));
    p.open_document("http://host/a\\b", "open");
    EXPECT_EQ(seen[1], "http://host/a\\b");
    result = EACCES;
    EXPECT_EQ(p.open_document("x", "open"), 5);
    result = ENOENT;
    EXPECT_EQ(p.open_document("x", "open"), 2);
}

TEST_F(PosixProcessesTest, OpenDocumentWithoutOpenerIsNoAssociation) {
    ScopedEnv env("PATH", dir.string());
    int spawned = 0;
    PosixProcesses p([&](const std::vector<std::string>&, pid_t&) { return ++spawned, 0; });
    EXPECT_EQ(p.open_document("report.xyz", "open"), kOpenNoAssociation);
    EXPECT_EQ(spawned, 0);
}

TEST(PosixShutdown, Commands) {
    using V = std::vector<std::string>;
    EXPECT_EQ(posix::shutdown_command(0, "", 1000),
              (V{"systemctl", "--no-ask-password", "poweroff"}));
    EXPECT_EQ(posix::shutdown_command(1, "", 1000),
              (V{"systemctl", "--no-ask-password", "poweroff", "--ignore-inhibitors"}));
    EXPECT_EQ(posix::shutdown_command(2, "", 1000),
              (V{"systemctl", "--no-ask-password", "reboot"}));
    EXPECT_EQ(posix::shutdown_command(3, "", 1000),
              (V{"systemctl", "--no-ask-password", "reboot", "--ignore-inhibitors"}));
    EXPECT_EQ(posix::shutdown_command(4, "7", 1000),
              (V{"loginctl", "--no-ask-password", "terminate-session", "7"}));
    EXPECT_EQ(posix::shutdown_command(5, "", 1000),
              (V{"loginctl", "--no-ask-password", "terminate-user", "1000"}));
}

// The dry run: with QUILLER_SHUTDOWN_LOG set, nothing is started; the action goes to the file.
// PATH is emptied as well, so even a real spawn could find nothing to run.
TEST_F(PosixProcessesTest, ShutdownLogReplacesTheAction) {
    ScopedEnv log(posix::kShutdownLogVariable, path("shutdown.log"));
    ScopedEnv env("PATH", dir.string());
    int spawned = 0;
    PosixProcesses p([&](const std::vector<std::string>&, pid_t&) { return ++spawned, ENOENT; });
    for (int mode : {0, 1, 2, 3, 4, 5, 6, -1}) p.exit_system(mode);
    EXPECT_EQ(spawned, 0);
    EXPECT_EQ(content("shutdown.log"),
              "poweroff\npoweroff force\nreboot\nreboot force\nlogoff\nlogoff force\n");
}

TEST_F(PosixProcessesTest, ShutdownLogThatCantBeWrittenStillStartsNothing) {
    ScopedEnv env("PATH", dir.string());
    int spawned = 0;
    PosixProcesses p([&](const std::vector<std::string>&, pid_t&) { return ++spawned, ENOENT; });
    for (const std::string& name : {path("no/such/dir/log"), std::string()}) {
        ScopedEnv log(posix::kShutdownLogVariable, name);
        for (int mode = 0; mode <= 5; ++mode) p.exit_system(mode);
    }
    EXPECT_EQ(spawned, 0);
}

}  // namespace
}  // namespace quiller::testing
