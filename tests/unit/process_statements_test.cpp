// `shell`, `web` and `shutdown` over a fake processes service: nothing is started or shut down.
// The only check of these statements on Windows, where the process_*.prg scripts don't run.
#include <gtest/gtest.h>

#include <tuple>

#include "scripted_host.hpp"

namespace quiller::testing {
namespace {

using ShellCall = std::tuple<std::string, bool, WindowState>;  // command, wait, window

// Programs named "nothere..." can't be found.
class FakeProcesses final : public Processes {
  public:
    std::vector<ShellCall> shells;
    std::vector<std::string> opened;  // "verb file"
    std::vector<int> exits;
    int open_result = 42;

    std::optional<std::uint32_t> shell_command(const std::string& command, bool wait,
                                               WindowState state) override {
        shells.emplace_back(command, wait, state);
        return command.starts_with("nothere") ? std::nullopt : std::optional<std::uint32_t>(1234);
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

// Which option wins is in cases/processes.tsv.
TEST(ShellStatement, OptionsExpansionAndWarnings) {
    ProcessHarness h;
    EXPECT_EQ(h.run("sub main\n"
                    "  shell \"prog a\"\n"
                    "  shell prog {wait}\n"
                    "  shell prog {Minimized}\n"
                    "  shell \"run %%USERNAME%%.cmd\"\n"  // the loop makes %%, shell expands
                    "  shell \"copy 100%% done\"\n"
                    "  shell \"nothere %%USERNAME%%\" {wait}\n"
                    "  print after\n"
                    "endsub\n"),
              0);
    EXPECT_EQ(h.processes->shells, (std::vector<ShellCall>{
                                       {"prog a", false, WindowState::Normal},
                                       {"prog", true, WindowState::Normal},
                                       {"prog", false, WindowState::Minimized},  // lower-cased
                                       {"run ada.cmd", false, WindowState::Normal},
                                       {"nothere ada", true, WindowState::Normal},
                                   }));
    ASSERT_EQ(h.host.errors.size(), 2u);
    for (const auto& e : h.host.errors) EXPECT_EQ(e.severity, Severity::Warning);
    EXPECT_NE(h.log().find("From Quiller : (ShellCommand) Mismatched % characters :'copy 100% "
                           "done'\n"),
              std::string::npos);
    EXPECT_NE(h.log().find("From Quiller : (ShellCommand) Couldn't find: nothere ada\n"),
              std::string::npos);
    EXPECT_EQ(h.log().find("From Windows"), std::string::npos);
    EXPECT_EQ(h.host.printed, std::vector<std::string>{"after"});
}

TEST(WebStatement, TheOpenersResultDecidesTheMessage) {
    const std::pair<int, std::string> cases[] = {
        {42, ""},
        {33, ""},
        {31,
         "There is no application associated with the 'open' verb and the given file name "
         "extension. \n"},
        {32, "Unable to shell application (ShellExecute returned 32)\n"},
        {0, "Unable to shell application (ShellExecute returned 0)\n"},
    };
    for (const auto& [result, message] : cases) {
        ProcessHarness h;
        h.processes->open_result = result;
        h.run("sub main\n  web \"https://example.org/a b\"\n  print after\nendsub\n");
        EXPECT_EQ(h.processes->opened, std::vector<std::string>{"open https://example.org/a b"});
        EXPECT_EQ(h.host.message_boxes.empty() ? "" : h.host.message_boxes[0], message) << result;
        EXPECT_EQ(h.host.printed.size(), 1u);
        EXPECT_TRUE(h.host.errors.empty());
    }
}

// Only the fake sees these: no test shuts anything down.
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
