// The engine through the scripted host: what the windows are shown, the error log record, and
// the log's size limit.
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

TEST(ErrorReport, FatalEndsTheRunAndNamesTheScript) {
    Harness h;
    const int status = h.run("sub main\n  goto nowhere\n  print never\nendsub\n");
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(h.host.printed.empty());
    ASSERT_EQ(h.host.errors.size(), 1u);
    EXPECT_EQ(h.host.errors[0].title, "Quiller v0.1.0 Error");
    EXPECT_NE(h.host.errors[0].text.find("From Quiller : (Findline) Couldn't find 'nowhere'\n"),
              std::string::npos);
    EXPECT_TRUE(h.host.errors[0].text.ends_with("above.\njob.prg will now end."));
    EXPECT_NE(h.log().find(" Fatal: .PRG halted\n"), std::string::npos);
}

TEST(ErrorReport, LogSizeLimit) {
    Harness h;
    h.files->files["/tmp/ql_err.txt"] = std::string(51200, 'x');
    h.run("sub main\n  bogus\nendsub\n");
    EXPECT_GT(h.log().size(), 51200u);  // exactly at the limit still receives a record

    Harness full;
    full.files->files["/tmp/ql_err.txt"] = std::string(51201, 'x');
    full.run("sub main\n  bogus\nendsub\n");
    EXPECT_EQ(full.log().size(), 51201u);
    ASSERT_EQ(full.host.errors.size(), 1u);
    EXPECT_EQ(full.host.errors[0].text,
              "Maximum size reached for error log! (/tmp/ql_err.txt)\n"
              "Error not reportable.  Purge the log file.\n\n"
              "There was a problem with the line shown above.\nPress OK to continue.");
}

TEST(ErrorReport, UserCanEndTheRunFromAWarning) {
    Harness h;
    h.host.error_choices.push_back(ErrorChoice::EndRun);
    EXPECT_EQ(h.run("sub main\n  bogus\n  print never\nendsub\n"), 1);
    EXPECT_TRUE(h.host.printed.empty());
}

TEST(Substitution, UnclosedDelimiterShowsTheMessageBoxAndEmptiesTheText) {
    Harness h;
    h.run("sub main\n  $a$ = 1\n  print \"$a$ costs 5$\"\nendsub\n");
    ASSERT_EQ(h.host.message_boxes.size(), 1u);
    EXPECT_EQ(h.host.message_boxes[0],
              "Replace Vars - Closing delimeter not found ($)\nUse $$ if this isn't a delimeter.\n"
              "\"1 costs 5$\"");
    ASSERT_EQ(h.host.printed.size(), 1u);
    EXPECT_EQ(h.host.printed[0], "");
    EXPECT_TRUE(h.host.errors.empty());
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

TEST(Startup, ChoosingAScript) {
    Harness none;
    Engine engine(none.host, none.platform, standard_language());
    EXPECT_EQ(engine.run(""), 2);

    Harness chosen;
    chosen.files->files["picked.prg"] = "sub main\nprint $param_count$\nendsub\n";
    chosen.host.chosen_script = "picked";
    Engine engine2(chosen.host, chosen.platform, standard_language());
    EXPECT_EQ(engine2.run(""), 0);
    EXPECT_EQ(chosen.host.printed, std::vector<std::string>{"0"});
    EXPECT_TRUE(chosen.log().empty());
}

}  // namespace
}  // namespace quiller::testing
