// The progress window's arithmetic and texts: percent, counts, rate and remaining time.
#include <gtest/gtest.h>

#include "ui/progress_model.hpp"

namespace quiller {
namespace {

ProgressModel model(std::int64_t total, std::int64_t done, double elapsed) {
    ProgressModel m;
    m.unit = "files";
    m.total = total;
    m.done = done;
    m.start = 100;
    m.now = 100 + elapsed;
    return m;
}

TEST(ProgressModel, NothingToDoIsAFullBar) {
    EXPECT_EQ(model(0, 0, 0).percent(), 100);
    EXPECT_EQ(model(0, 3, 1).percent(), 100);
}

TEST(ProgressModel, PercentIsRoundedHalfToEvenAndCappedAt100) {
    EXPECT_EQ(model(4, 3, 1).percent(), 75);
    EXPECT_EQ(model(8, 1, 1).percent(), 12);  // 12.5
    EXPECT_EQ(model(8, 3, 1).percent(), 38);  // 37.5
    EXPECT_EQ(model(3, 2, 1).percent(), 67);
    EXPECT_EQ(model(4, 9, 1).percent(), 100);
    EXPECT_EQ(model(5000000000LL, 2500000000LL, 1).percent(), 50);
}

TEST(ProgressModel, RemainingTimeText) {
    EXPECT_EQ(remaining_text(3725), "1:02:05 remaining");
    EXPECT_EQ(remaining_text(45), "45 remaining");
    EXPECT_EQ(remaining_text(0.5), "");
    EXPECT_EQ(remaining_text(0.9), "");
    EXPECT_EQ(remaining_text(0.91), "01 remaining");
    EXPECT_EQ(remaining_text(5), "05 remaining");
    EXPECT_EQ(remaining_text(200), "03:20 remaining");
    // Minutes show only above 60 s, so a minute or just under reads as the wrapped seconds.
    EXPECT_EQ(remaining_text(60), "00 remaining");
    EXPECT_EQ(remaining_text(59.6), "00 remaining");
    EXPECT_EQ(remaining_text(60.4), "01:00 remaining");
    EXPECT_EQ(remaining_text(3600), "1:00:00 remaining");
    EXPECT_EQ(remaining_text(90061), "25:01:01 remaining");
    EXPECT_EQ(remaining_text(-3), "");
}

TEST(ProgressModel, TimeLineWithRateAndRemainingTime) {
    const ProgressModel m = model(10, 4, 2);
    EXPECT_DOUBLE_EQ(m.rate(), 2.0);
    EXPECT_DOUBLE_EQ(m.remaining(), 3.0);
    EXPECT_EQ(m.count_text(), "4 of 10 files");
    EXPECT_EQ(m.rate_text(), "(2.0 files/sec)");
    EXPECT_EQ(m.time_text(), "03 remaining");
    EXPECT_EQ(m.time_line(), "4 of 10 files (2.0 files/sec) 03 remaining");
}

TEST(ProgressModel, BeforeAnyTimeHasPassed) {
    const ProgressModel m = model(1234, 0, 0);
    EXPECT_EQ(m.rate(), 0);
    EXPECT_EQ(m.remaining(), 0);
    EXPECT_EQ(m.rate_text(), "");
    EXPECT_EQ(m.time_text(), "");
    EXPECT_EQ(m.time_line(), "0 of 1,234 files  ");
}

TEST(ProgressModel, CountsWithThousandsSeparatorsAndSlowRates) {
    const ProgressModel m = model(5000, 1234, 4000);
    EXPECT_EQ(m.count_text(), "1,234 of 5,000 files");
    EXPECT_EQ(m.rate_text(), "(0.3 files/sec)");
    EXPECT_EQ(m.time_text(), "3:23:27 remaining");  // 3,766 files at 0.3085 a second
}

TEST(ProgressModel, DoneBeyondTotalShowsNoTime) {
    const ProgressModel m = model(3, 5, 1);
    EXPECT_EQ(m.percent(), 100);
    EXPECT_EQ(m.time_text(), "");
    EXPECT_EQ(m.rate_text(), "(5.0 files/sec)");
}

}  // namespace
}  // namespace quiller
