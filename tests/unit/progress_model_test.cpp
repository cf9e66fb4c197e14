// The progress windows' arithmetic and texts (percent, counts, rate and remaining time): the rows
// of cases/progress.tsv.
#include <gtest/gtest.h>

#include "reference_table.hpp"
#include "ui/progress_model.hpp"

namespace quiller {
namespace {

using test::Cells;

// WINDOW (popup or progress) TOTAL DONE SECONDS-ELAPSED.
ProgressModel model(const Cells& a) {
    ProgressModel m;
    m.window = a[0] == "popup" ? ProgressWindow::Popup : ProgressWindow::Progress;
    m.unit = "files";
    m.total = std::stoll(a[1]);
    m.done = std::stoll(a[2]);
    m.start_timer(100);
    m.now = 100 + std::stod(a[3]);
    return m;
}

TEST(ProgressCases, EveryRowOfTheTable) {
    test::check_case_table(
        "progress.tsv",
        {{"percent", [](const Cells& a) { return std::to_string(model(a).percent()); }},
         {"percent-text", [](const Cells& a) { return model(a).percent_text(); }},
         {"remaining", [](const Cells& a) { return remaining_text(std::stod(a[0])); }},
         {"time-line", [](const Cells& a) { return model(a).time_line(); }}});
}

}  // namespace
}  // namespace quiller
