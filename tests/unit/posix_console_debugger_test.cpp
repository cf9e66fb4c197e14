// quillerc's debugger on a terminal, through a pseudo-terminal: the listing around the line,
// Step runs one line, Terminate ends without running the line.
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>

#include "scratch_folder.hpp"

namespace {

// Reads from the terminal until `until` appears after `from` (or the child closed it).
bool read_until(int fd, std::string& seen, const std::string& until, std::size_t from) {
    char buf[512];
    while (seen.find(until, from) == std::string::npos) {
        pollfd p{fd, POLLIN, 0};
        if (::poll(&p, 1, 10000) <= 0) return false;
        const ssize_t n = ::read(fd, buf, sizeof buf);
        if (n <= 0) return false;
        seen.append(buf, static_cast<std::size_t>(n));
    }
    return true;
}

using ConsoleDebugger = quiller::testing::ScratchFolder;

TEST_F(ConsoleDebugger, StepThenTerminateOnATerminal) {
    write("job.prg", "sub main\n debug on\n if 1 = 1\n  print one\n endif\n print two\nendsub\n");
    int terminal = -1;
    const pid_t pid = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        ::setenv("QUILLER_REGISTRY", path("registry.db").c_str(), 1);
        ::setenv("TMPDIR", dir.c_str(), 1);
        ::execl(QUILLERC_PATH, "quillerc", path("job.prg").c_str(), static_cast<char*>(nullptr));
        ::_exit(127);
    }
    const std::string prompt = "[S]tep  [C]ontinue  [T]erminate? ";
    std::string seen;
    ASSERT_TRUE(read_until(terminal, seen, prompt, 0)) << seen;
    EXPECT_NE(seen.find("  001 sub main"), std::string::npos) << seen;
    EXPECT_NE(seen.find("> 003     if 1 = 1"), std::string::npos) << seen;
    EXPECT_NE(seen.find("  004         print one"), std::string::npos) << seen;
    EXPECT_NE(seen.find("  ver = "), std::string::npos) << seen;
    ASSERT_EQ(::write(terminal, "s", 1), 1);
    std::size_t mark = seen.size();
    ASSERT_TRUE(read_until(terminal, seen, prompt, mark)) << seen;
    EXPECT_NE(seen.find("> 004         print one", mark), std::string::npos) << seen;
    ASSERT_EQ(::write(terminal, "\n", 1), 1);  // Enter steps too: "one" is printed
    mark = seen.size();
    ASSERT_TRUE(read_until(terminal, seen, "> 005", mark)) << seen;
    ASSERT_TRUE(read_until(terminal, seen, prompt, mark)) << seen;
    EXPECT_NE(seen.find("one\r\n", mark), std::string::npos) << seen;
    ASSERT_EQ(::write(terminal, "s", 1), 1);
    ASSERT_TRUE(read_until(terminal, seen, "> 006", mark)) << seen;
    ASSERT_TRUE(read_until(terminal, seen, prompt, seen.find("> 006", mark))) << seen;
    ASSERT_EQ(::write(terminal, "t", 1), 1);
    mark = seen.size();
    read_until(terminal, seen, "\x01", mark);  // to the end of its output
    int status = 0;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(seen.find("two\r\n", mark), std::string::npos) << seen;  // never ran
    ::close(terminal);
}

}  // namespace
