// `shell`, `web` and `shutdown` over a fake processes service: nothing is started or shut down.
#include <gtest/gtest.h>

#include "scripted_host.hpp"

namespace quiller::testing {
namespace {

struct ShellCall {
    std::string command;
    bool wait;
    WindowState state;
};

class FakeProcesses final : public Processes {
  public:
    std::vector<ShellCall> shells;
    std::vector<std::string> opened;  // "verb file"
    std::vector<int> exits;
    bool program_exists = true;
    int open_result = 42;

    std::optional<std::uint32_t> shell_command(const std::string& command, bool wait,
                                               WindowState state) override {
        shells.push_back({command, wait, state});
        if (!program_exists) return std::nullopt;
        return 1234;
    }
    void wait_for_process(std::uint32_t) override {}
    int open_document(const std::string& file, const std::string& verb) override {
        opened.push_back(verb + " " + file);
        return open_result;
    }
    bool is_windows_nt() override { return true; }
    void exit_system(int mode) override { exits.push_back(mode); }
};

struct ProcessHarness : Harness {
    FakeProcesses* processes;
    ProcessHarness() {
        auto p = std::make_unique<FakeProcesses>();
        processes = p.get();
        platform.processes = std::move(p);
    }
};

TEST(ShellStatement, OptionsGiveWaitAndWindowState) {
    ProcessHarness h;
    EXPECT_EQ(h.run("sub main\n"
                    "  shell \"prog a\"\n"
                    "  shell prog {wait}\n"
                    "  shell prog {minimized hidden}\n"
                    "  shell prog {maxmized minimized wait}\n"
                    "  shell prog {maximized}\n"
                    "  shell prog {Minimized}\n"
                    "endsub\n"),
              0);
    const auto& s = h.processes->shells;
    ASSERT_EQ(s.size(), 6u);
    EXPECT_EQ(s[0].command, "prog a");
    EXPECT_FALSE(s[0].wait);
    EXPECT_EQ(s[0].state, WindowState::Normal);
    EXPECT_TRUE(s[1].wait);
    EXPECT_EQ(s[1].state, WindowState::Normal);
    EXPECT_EQ(s[2].state, WindowState::Hidden);
    EXPECT_FALSE(s[2].wait);
    EXPECT_EQ(s[3].state, WindowState::Maximized);
    EXPECT_TRUE(s[3].wait);
    EXPECT_EQ(s[4].state, WindowState::Normal);
    EXPECT_EQ(s[5].state, WindowState::Minimized);  // option text is lower-cased
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(ShellStatement, ExpandsEnvironmentReferencesAgain) {
    ProcessHarness h;
    // The loop turns "%%" into "%", so the statement itself sees %USERNAME%.
    h.run(
        "sub main\n"
        "  shell \"run %%USERNAME%%.cmd\"\n"
        "  set $c$ \"x %%USERDOMAIN%% y\"\n"
        "  shell \"$c$\"\n"
        "endsub\n");
    ASSERT_EQ(h.processes->shells.size(), 2u);
    EXPECT_EQ(h.processes->shells[0].command, "run ada.cmd");
    EXPECT_EQ(h.processes->shells[1].command, "x CORVALE y");
}

TEST(ShellStatement, MismatchedPercentIsAWarning) {
    ProcessHarness h;
    EXPECT_EQ(h.run("sub main\n  shell \"copy 100%% done\"\n  print after\nendsub\n"), 0);
    EXPECT_TRUE(h.processes->shells.empty());
    ASSERT_EQ(h.host.errors.size(), 1u);
    EXPECT_EQ(h.host.errors[0].severity, Severity::Warning);
    EXPECT_EQ(h.host.errors[0].text,
              "PRG=job.prg\nSub=main\nLine 2= shell \"copy 100% done\"\n"
              "From Quiller : (ShellCommand) Mismatched % characters :'copy 100% done'\n\n"
              "There was a problem with the line shown above.\nPress OK to continue.");
    ASSERT_EQ(h.host.printed.size(), 1u);
}

TEST(ShellStatement, MissingProgramIsAWarningWithoutSystemText) {
    ProcessHarness h;
    h.processes->program_exists = false;
    EXPECT_EQ(h.run("sub main\n  shell \"nothere %%USERNAME%%\" {wait}\n  print after\nendsub\n"),
              0);
    ASSERT_EQ(h.host.errors.size(), 1u);
    EXPECT_EQ(h.host.errors[0].severity, Severity::Warning);
    EXPECT_EQ(h.host.errors[0].text,
              "PRG=job.prg\nSub=main\nLine 2= shell \"nothere %USERNAME%\" {wait}\n"
              "From Quiller : (ShellCommand) Couldn't find: nothere ada\n\n"
              "There was a problem with the line shown above.\nPress OK to continue.");
    EXPECT_NE(h.log().find("From Quiller : (ShellCommand) Couldn't find: nothere ada\n"),
              std::string::npos);
    EXPECT_EQ(h.log().find("From Windows"), std::string::npos);
    ASSERT_EQ(h.host.printed.size(), 1u);
    EXPECT_EQ(h.host.printed[0], "after");
}

TEST(WebStatement, OpensWithTheOpenVerb) {
    ProcessHarness h;
    h.run("sub main\n  web \"https://example.org/a b\"\nendsub\n");
    ASSERT_EQ(h.processes->opened.size(), 1u);
    EXPECT_EQ(h.processes->opened[0], "open https://example.org/a b");
    EXPECT_TRUE(h.host.message_boxes.empty());
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(WebStatement, NoAssociationShowsAMessageAndGoesOn) {
    ProcessHarness h;
    h.processes->open_result = 31;
    h.run("sub main\n  web report.xyz\n  print after\nendsub\n");
    ASSERT_EQ(h.host.message_boxes.size(), 1u);
    EXPECT_EQ(h.host.message_boxes[0],
              "There is no application associated with the 'open' verb and the given file name "
              "extension. \n");
    EXPECT_EQ(h.host.printed.size(), 1u);
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(WebStatement, OtherFailuresShowTheResult) {
    for (int code : {0, 2, 32}) {
        ProcessHarness h;
        h.processes->open_result = code;
        h.run("sub main\n  web report.txt\nendsub\n");
        ASSERT_EQ(h.host.message_boxes.size(), 1u);
        EXPECT_EQ(h.host.message_boxes[0], "Unable to shell application (ShellExecute returned " +
                                               std::to_string(code) + ")\n");
    }
    ProcessHarness h;
    h.processes->open_result = 33;
    h.run("sub main\n  web report.txt\nendsub\n");
    EXPECT_TRUE(h.host.message_boxes.empty());
}

TEST(ShutdownStatement, ModesReachTheService) {
    ProcessHarness h;
    h.run(
        "sub main\n"
        "  shutdown 0\n  shutdown 1\n  shutdown 2\n  shutdown 3\n  shutdown 4\n  shutdown 5\n"
        "  shutdown 7\n  shutdown abc\n  shutdown -1\n  shutdown\n  shutdown 4.5 {quiet}\n"
        "  print after\n"
        "endsub\n");
    EXPECT_EQ(h.processes->exits, (std::vector<int>{0, 1, 2, 3, 4, 5, 0, 0, 0, 4}));
    EXPECT_EQ(h.host.printed.size(), 1u);
    EXPECT_TRUE(h.host.errors.empty());
}

}  // namespace
}  // namespace quiller::testing
