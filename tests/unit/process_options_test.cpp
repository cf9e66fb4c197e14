// How `shell` and `shutdown` read their arguments, and the expansion of %NAME% references.
#include <gtest/gtest.h>

#include "scripted_host.hpp"
#include "services/process_options.hpp"

namespace quiller::testing {
namespace {

TEST(ProcessOptions, WindowStateLaterTestsWin) {
    EXPECT_EQ(process::window_state(""), WindowState::Normal);
    EXPECT_EQ(process::window_state("wait"), WindowState::Normal);
    EXPECT_EQ(process::window_state("minimized"), WindowState::Minimized);
    EXPECT_EQ(process::window_state("maxmized"), WindowState::Maximized);
    EXPECT_EQ(process::window_state("hidden"), WindowState::Hidden);
    EXPECT_EQ(process::window_state("hidden minimized"), WindowState::Hidden);
    EXPECT_EQ(process::window_state("minimized hidden"), WindowState::Hidden);
    EXPECT_EQ(process::window_state("maxmized minimized"), WindowState::Maximized);
    EXPECT_EQ(process::window_state("hidden maxmized"), WindowState::Hidden);
    // Spelled with the i, the word doesn't hold "maxmized".
    EXPECT_EQ(process::window_state("maximized"), WindowState::Normal);
    // Containment: a longer word counts.
    EXPECT_EQ(process::window_state("unhiddenly"), WindowState::Hidden);
}

TEST(ProcessOptions, ShutdownModes) {
    for (int m = 0; m <= 5; ++m) EXPECT_EQ(process::shutdown_mode(std::to_string(m)), m);
    EXPECT_EQ(process::shutdown_mode("7"), 0);
    EXPECT_EQ(process::shutdown_mode("5.5"), 0);
    EXPECT_EQ(process::shutdown_mode("abc"), 0);
    EXPECT_EQ(process::shutdown_mode(""), 0);
    EXPECT_EQ(process::shutdown_mode(" 3 "), 3);
    EXPECT_EQ(process::shutdown_mode("2.5"), 2);
    EXPECT_EQ(process::shutdown_mode("3.5"), 4);
    EXPECT_EQ(process::shutdown_mode("-0.4"), 0);
    EXPECT_EQ(process::shutdown_mode("-1"), std::nullopt);
    EXPECT_EQ(process::shutdown_mode("-0.6"), std::nullopt);
    EXPECT_EQ(process::shutdown_mode("-100"), std::nullopt);
}

TEST(ProcessOptions, ShutdownActions) {
    EXPECT_EQ(process::shutdown_action(0), "poweroff");
    EXPECT_EQ(process::shutdown_action(1), "poweroff force");
    EXPECT_EQ(process::shutdown_action(2), "reboot");
    EXPECT_EQ(process::shutdown_action(3), "reboot force");
    EXPECT_EQ(process::shutdown_action(4), "logoff");
    EXPECT_EQ(process::shutdown_action(5), "logoff force");
    EXPECT_EQ(process::shutdown_action(6), "");
    EXPECT_EQ(process::shutdown_action(-1), "");
}

TEST(ProcessOptions, ExpandEnvironment) {
    FixedEnvironment env;
    EXPECT_EQ(process::expand_environment("plain text", env), "plain text");
    EXPECT_EQ(process::expand_environment("", env), "");
    EXPECT_EQ(process::expand_environment("run %USERNAME%.cmd", env), "run ada.cmd");
    EXPECT_EQ(process::expand_environment("%USERDOMAIN%\\%USERNAME%", env), "CORVALE\\ada");
    EXPECT_EQ(process::expand_environment("[%NOT_SET%]", env), "[]");
    EXPECT_EQ(process::expand_environment("100%% sure", env), "100% sure");
    EXPECT_EQ(process::expand_environment("a %b", env), std::nullopt);
    EXPECT_EQ(process::expand_environment("%USERNAME% %", env), std::nullopt);
    EXPECT_EQ(process::expand_environment("%", env), std::nullopt);
}

}  // namespace
}  // namespace quiller::testing
