// How `shell` and `shutdown` read their arguments, and the expansion of %NAME% references.
#include <gtest/gtest.h>

#include "scripted_host.hpp"
#include "os/process_options.hpp"

namespace quiller::testing {
namespace {

// More combinations go through the statement in process_statements_test.cpp.
TEST(ProcessOptions, WindowStateLaterTestsWin) {
    const std::pair<const char*, WindowState> cases[] = {
        {"", WindowState::Normal},
        {"hidden maxmized", WindowState::Hidden},
        {"minimized maxmized", WindowState::Maximized},
        {"maximized", WindowState::Normal},   // spelled with the i, it doesn't hold "maxmized"
        {"unhiddenly", WindowState::Hidden},  // containment: a longer word counts
    };
    for (const auto& [options, state] : cases)
        EXPECT_EQ(process::window_state(options), state) << options;
}

TEST(ProcessOptions, ShutdownModes) {
    const std::optional<int> none;  // a negative mode does nothing
    const std::pair<const char*, std::optional<int>> cases[] = {
        {"5", 5},   {"7", 0},   {"5.5", 0},  {"abc", 0},   {"", 0},        {" 3 ", 3},
        {"2.5", 2}, {"3.5", 4}, {"-0.4", 0}, {"-1", none}, {"-0.6", none}, {"-100", none},
    };
    for (const auto& [text, mode] : cases) EXPECT_EQ(process::shutdown_mode(text), mode) << text;
}

TEST(ProcessOptions, ExpandEnvironment) {
    FixedEnvironment env;
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"", ""},
        {"%USERDOMAIN%\\%USERNAME%.cmd", "CORVALE\\ada.cmd"},
        {"[%NOT_SET%]", "[]"},
        {"100%% sure", "100% sure"},
        {"a %b", std::nullopt},
        {"%USERNAME% %", std::nullopt},
        {"%", std::nullopt},
    };
    for (const auto& [text, expanded] : cases)
        EXPECT_EQ(process::expand_environment(text, env), expanded) << text;
}

}  // namespace
}  // namespace quiller::testing
