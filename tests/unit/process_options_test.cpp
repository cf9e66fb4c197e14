// How `shell` and `shutdown` read their arguments, and the expansion of %NAME% references: the
// rows of cases/processes.tsv (more combinations go through the statements in
// process_statements_test.cpp).
#include <gtest/gtest.h>

#include "os/process_options.hpp"
#include "reference_table.hpp"
#include "scripted_host.hpp"

namespace quiller::testing {
namespace {

using test::Cells;

TEST(ProcessCases, EveryRowOfTheTable) {
    static const char* const kStates[] = {"hidden", "normal", "minimized", "maximized"};
    test::check_case_table(
        "processes.tsv",
        {{"window-state",
          [](const Cells& a) { return kStates[static_cast<int>(process::window_state(a[0]))]; }},
         {"shutdown-mode",
          [](const Cells& a) {
              const std::optional<int> mode = process::shutdown_mode(a[0]);
              return mode ? std::to_string(*mode) : "none";
          }},
         {"expand", [](const Cells& a) {
              FixedEnvironment env;
              return process::expand_environment(a[0], env).value_or("(mismatched)");
          }}});
}

}  // namespace
}  // namespace quiller::testing
