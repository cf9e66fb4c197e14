// The POSIX processes service where the script tests (tests/scripts/process_*.prg) can't look:
// how a program is found, reaping, the opener's arguments and errors, and shutdown, which is only
// ever tried with QUILLER_SHUTDOWN_LOG set, an empty PATH and a spawner that starts nothing.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "os/posix/posix_processes.hpp"
#include "reference_table.hpp"
#include "scratch_folder.hpp"

namespace quiller::testing {
namespace {

using posix::PosixProcesses;

using PosixProcessesTest = ScratchFolder;

TEST_F(PosixProcessesTest, MissingProgramsAreNotFound) {
    PosixProcesses p;
    write("data.txt", "not a program");
    for (bool wait : {true, false})
        for (const std::string& command :
             {path("missing") + " x", path("data.txt"), std::string(" \t"), std::string()})
            EXPECT_FALSE(p.shell_command(command, wait, WindowState::Normal)) << command;
    // Found by the shell's own lookup, as its exit status tells, when the first word can't say.
    EXPECT_FALSE(
        p.shell_command("cd / && quiller-no-such-program 2>/dev/null", true, WindowState::Normal));
}

// Whether the first word of a command line names a program, and the commands a shutdown would
// run (none is ever started by a test): the rows of cases/posix_processes.tsv.
TEST(PosixProcessesCases, EveryRowOfTheTable) {
    test::check_case_table(
        "posix_processes.tsv",
        {{"found", [](const test::Cells& a) { return posix::command_found(a[0]) ? "yes" : "no"; }},
         {"shutdown", [](const test::Cells& a) {
              std::string joined;
              for (const std::string& word : posix::shutdown_command(std::stoi(a[0]), a[1], 1000))
                  joined += (joined.empty() ? "" : " ") + word;
              return joined;
          }}});
}

TEST_F(PosixProcessesTest, FindProgramSearchesPath) {
    write("tool", "#!/bin/sh\n");
    ::chmod(path("tool").c_str(), 0755);
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

// Files get "/" for "\" (process_web.prg); addresses keep theirs, and errors map to the results
// of the Windows call.
TEST_F(PosixProcessesTest, OpenDocumentArgumentsAndErrors) {
    write("xdg-open", "#!/bin/sh\n");
    ::chmod(path("xdg-open").c_str(), 0755);
    ScopedEnv env("PATH", dir.string());
    std::vector<std::string> seen;
    int result = 0;
    PosixProcesses p([&](const std::vector<std::string>& argv, pid_t&) {
        seen = argv;
        return result;
    });
    EXPECT_EQ(p.open_document("http://host/a\\b", "open"), 42);
    EXPECT_EQ(seen, (std::vector<std::string>{path("xdg-open"), "http://host/a\\b"}));
    for (const auto& [error, code] : {std::pair{EACCES, 5}, std::pair{ENOENT, 2}}) {
        result = error;
        EXPECT_EQ(p.open_document("x", "open"), code);
    }
}

// The dry run: with QUILLER_SHUTDOWN_LOG set, nothing is started, whether or not the log can be
// written; the action goes to the file. PATH is emptied too, so even a real spawn finds nothing.
TEST_F(PosixProcessesTest, ShutdownLogReplacesTheAction) {
    ScopedEnv env("PATH", dir.string());
    int spawned = 0;
    PosixProcesses p([&](const std::vector<std::string>&, pid_t&) { return ++spawned, ENOENT; });
    for (const std::string& name : {path("shutdown.log"), path("no/such/dir/log"), std::string()}) {
        ScopedEnv log(posix::kShutdownLogVariable, name);
        for (int mode : {0, 1, 2, 3, 4, 5, 6, -1}) p.exit_system(mode);
    }
    EXPECT_EQ(spawned, 0);
    EXPECT_EQ(content("shutdown.log"),
              "poweroff\npoweroff force\nreboot\nreboot force\nlogoff\nlogoff force\n");
}

}  // namespace
}  // namespace quiller::testing
