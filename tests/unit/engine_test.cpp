// The engine through the scripted host where the script tests can't look: the log record's header,
// the text limit, ending from a warning, the line limit and the chosen script. (A fatal error, the
// log's size limit and an unclosed "$" are proved by errors_fatal.prg, errors_log_size_*.prg and
// unclosed_delimiter.prg.)
#include <gtest/gtest.h>

#include "scripted_host.hpp"

namespace quiller::testing {
namespace {

TEST(ErrorReport, WarningRecordWindowAndOnError) {
    Harness h;
    const int status = h.run(
        "sub main\n"
        "  bogus one two\n"
        "  print \"after $param[0]$|$param[1]$|$param[2]$|$param[3]$\"\n"
        "endsub\n"
        "sub on_error\n"
        "  print handled\n"
        "endsub\n");
    EXPECT_EQ(status, 0);
    const std::string message = "(DoPrg) bogus one two :Unrecognized command 'bogus'";
    EXPECT_EQ(h.log(),
              "\n11/22/2026 1:05:09 PM---------CORVALE\\ada WS01 ----------------- Quiller -  "
              "Warning: .PRG can continue\n"
              "PRG=job.prg\nSub=main\nLine 2= bogus one two\nFrom Quiller : " +
                  message + "\n");
    ASSERT_EQ(h.host.errors.size(), 1u);
    EXPECT_EQ(h.host.errors[0].title, "Quiller v0.1.0 Warning");
    EXPECT_EQ(h.host.errors[0].text,
              "PRG=job.prg\nSub=main\nLine 2= bogus one two\nFrom Quiller : " + message +
                  "\n\nThere was a problem with the line shown above.\nPress OK to continue.");
    ASSERT_EQ(h.host.printed.size(), 2u);
    EXPECT_EQ(h.host.printed[0], "handled");
    EXPECT_EQ(h.host.printed[1], "after " + message + "|1|2|bogus one two");
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

// Choosing a script is in registry_operations_test.cpp (LastPrg).
TEST(Startup, NoScriptNamedOrChosen) {
    Harness none;
    Engine engine(none.host, none.platform, standard_language());
    EXPECT_EQ(engine.run(""), 2);
}

}  // namespace
}  // namespace quiller::testing
