// The progress window's arithmetic and texts: percent, counts, rate and remaining time.
#include <gtest/gtest.h>

#include "ui/progress_model.hpp"

namespace quiller {
namespace {

ProgressModel model(std::int64_t total, std::int64_t done, double elapsed) {
    ProgressModel m;
    m.window = ProgressWindow::Popup;
    m.unit = "files";
    m.total = total;
    m.done = done;
    m.start = 100;
    m.now = 100 + elapsed;
    return m;
}

TEST(ProgressModel, PercentIsRoundedHalfToEvenAndCappedAt100) {
    const struct {
        std::int64_t total, done;
        int percent;
    } cases[] = {
        {0, 0, 100}, {0, 3, 100},  // nothing to do is a full bar
        {4, 3, 75},  {8, 1, 12},  {8, 3, 38},
        {3, 2, 67},  {4, 9, 100}, {5000000000LL, 2500000000LL, 50},
    };
    for (const auto& c : cases)
        EXPECT_EQ(model(c.total, c.done, 1).percent(), c.percent) << c.done << "/" << c.total;
}

TEST(ProgressModel, RemainingTimeText) {
    const struct {
        double seconds;
        const char* text;
    } cases[] = {
        {0.9, ""},
        {-3, ""},
        {0.91, "01 remaining"},
        {45, "45 remaining"},
        // Minutes show only above 60 s, so a minute or just under reads as the wrapped seconds.
        {59.6, "00 remaining"},
        {60, "00 remaining"},
        {60.4, "01:00 remaining"},
        {200, "03:20 remaining"},
        {3600, "1:00:00 remaining"},
        {90061, "25:01:01 remaining"},
    };
    for (const auto& c : cases) EXPECT_EQ(remaining_text(c.seconds), c.text) << c.seconds;
}

TEST(ProgressModel, TimeLine) {
    EXPECT_EQ(model(10, 4, 2).time_line(), "4 of 10 files (2.0 files/sec) 03 remaining");
    EXPECT_EQ(model(1234, 0, 0).time_line(), "0 of 1,234 files  ");  // before any time passed
    // 3,766 files at 0.3085 a second.
    EXPECT_EQ(model(5000, 1234, 4000).time_line(),
              "1,234 of 5,000 files (0.3 files/sec) 3:23:27 remaining");
    EXPECT_EQ(model(3, 5, 1).time_line(), "5 of 3 files (5.0 files/sec) ");  // done beyond total
}

}  // namespace
}  // namespace quiller
