// The engine through the scripted host where the script tests can't look: the log record's header,
// the text limit, ending from a warning and the line limit. (The error window and on_error, a
// fatal error, the log's size limit, an unclosed "$" and a run without a script are proved by
// errors_warning_log.prg, on_error.prg, errors_fatal.prg, errors_log_size_*.prg,
// unclosed_delimiter.prg and startup_no_script.prg.)
#include <gtest/gtest.h>

#include "scripted_host.hpp"

namespace quiller::testing {
namespace {

TEST(ErrorReport, LogRecordHeader) {
    Harness h;
    EXPECT_EQ(h.run("sub main\n  bogus one two\nendsub\n"), 0);
    EXPECT_EQ(h.log(),
              "\n11/22/2026 1:05:09 PM---------CORVALE\\ada WS01 ----------------- Quiller -  "
              "Warning: .PRG can continue\n"
              "PRG=job.prg\nSub=main\nLine 2= bogus one two\nFrom Quiller : (DoPrg) bogus one "
              "two :Unrecognized command 'bogus'\n");
}

// A doubling loop stops growing at the text limit: each longer text is a warning and the
// variable keeps its last value.
TEST(ErrorReport, TextOverTheLimitIsOutOfStringSpace) {
    Harness h;
    h.text_limit = 1000;
    const int status = h.run(
        "sub main\n  errorshow off\n  set $s$ \"x\"\n  set $n$ 0\n  while $n$ < 12\n"
        "    set $s$ \"$s$$s$\"\n    set $n$ $n$ + 1\n  endwhile\n"
        "  set $l$ len \"$s$\"\n  print \"$l$\"\nendsub\n");
    EXPECT_EQ(status, 0);
    EXPECT_EQ(h.host.printed, std::vector<std::string>{"512"});
    EXPECT_NE(h.log().find("Line 6= set $s$ \"$s$$s$\"\nFrom Quiller : (DoPrg) Run-time error in "
                           "'set'\nFrom Windows : Out of string space (14)\n"),
              std::string::npos);
}

TEST(ErrorReport, UserCanEndTheRunFromAWarning) {
    Harness h;
    h.host.error_choices.push_back(ErrorChoice::EndRun);
    EXPECT_EQ(h.run("sub main\n  bogus\n  print never\nendsub\n"), 1);
    EXPECT_TRUE(h.host.printed.empty());
}

// Line numbers are 16-bit: 32,767 kept lines load (comments don't count), one more is reported.
TEST(Loader, LineLimit) {
    auto script = [](int kept) {
        std::string s = "sub main\n' a comment line, not kept\n\n";
        for (int i = 0; i < kept - 2; ++i) s += "label x\n";
        return s + "endsub\n";
    };
    Harness fits;
    EXPECT_EQ(fits.run(script(32767)), 0);
    EXPECT_TRUE(fits.host.errors.empty());

    Harness over;
    EXPECT_EQ(over.run(script(32768)), 1);
    ASSERT_EQ(over.host.errors.size(), 1u);
    EXPECT_NE(over.host.errors[0].text.find("(ReadPrg) 'job.prg' has more than 32767 lines.\n"
                                            "From Windows : Overflow (6)"),
              std::string::npos);
}

}  // namespace
}  // namespace quiller::testing
