// The windows' rules without a toolkit: question layout and answers, the output window's modal
// and end-of-run rules, progress texts and Cancel, the debugger's listing and wait, the error
// window's buttons, and the placement store.
#include <gtest/gtest.h>

#include "hosts/common/registry_settings.hpp"
#include "scripted_host.hpp"
#include "ui/debug_model.hpp"
#include "ui/error_window_model.hpp"
#include "ui/question_model.hpp"

namespace quiller::testing {
namespace {

TEST(QuestionModel, LayoutAndAnswers) {
    const struct {
        const char *kind, *def;
        int label;
        const char *b1, *b2, *first, *answer1, *answer2;
    } cases[] = {
        {"yesno", "YES", 1935, "&Yes", "&No", "Button1", "Yes", "No"},
        {"yesno", "", 1935, "&Yes", "&No", "Button2", "Yes", "No"},
        {"text", "abc", 735, "&OK", "", "AnswerText", "abc", "-"},
    };
    for (const auto& c : cases) {
        QuestionModel m(Question{c.kind, "Go?", c.def, "*", "Quiller v0.1.0 Question"});
        EXPECT_EQ(m.label_height(), c.label);
        EXPECT_EQ(m.answer_visible(), std::string(c.kind) == "text");
        EXPECT_EQ(m.button1().caption, c.b1);
        EXPECT_EQ(m.button2().visible, *c.b2 != 0);
        if (*c.b2) {
            EXPECT_EQ(m.button2().caption, c.b2);
        }
        EXPECT_EQ(m.tab_order().front(), c.first);
        EXPECT_EQ(m.button1().is_default, std::string(c.first) != "Button2");
        EXPECT_EQ(m.answer(), std::string(c.kind) == "text" ? c.def : "");  // the close box
        m.press_button1();
        EXPECT_EQ(m.answer(), c.answer1);
        if (*c.b2) {
            m.press_button2();
            EXPECT_EQ(m.answer(), c.answer2);
        }
    }
    QuestionModel secret(Question{"text", "Password?", "", "*", ""});
    EXPECT_EQ(secret.password_char(), "*");
    EXPECT_EQ(without_mnemonic("Save && &Quit"), "Save & Quit");
}

TEST(OutputModel, ModalPauseCaretCountdownAndFinish) {
    OutputModel m;
    m.show("Title", "one", false, false);
    EXPECT_FALSE(m.caret_at_start());
    m.show("", "zero", false, true);
    EXPECT_EQ(m.text(), "zero\none");
    EXPECT_TRUE(m.caret_at_start());
    EXPECT_FALSE(m.begin_modal("Wait"));  // hidden: the message becomes the title too
    EXPECT_EQ(m.title(), "Wait");
    m.end_modal(false);
    m.set_visible(true);
    EXPECT_TRUE(m.begin_modal("Again"));
    EXPECT_EQ(m.title(), "Wait");
    EXPECT_EQ(OutputModel::countdown_caption(6, "Quiller v0.1.0"), "6 :  Quiller v0.1.0");
    m.set_caption("Quiller v0.1.0");
    m.finish();
    EXPECT_EQ(m.caption(), "Quiller v0.1.0 - Program Finished");
    EXPECT_TRUE(m.ok_enabled() && m.close_ends_program());
}

// The texts are rows of cases/progress.tsv.
TEST(ProgressModel, CancelAndPopupPlace) {
    ProgressModel popup;
    popup.window = ProgressWindow::Popup;
    EXPECT_EQ(popup.press_cancel(), CancelEffect::EndProgram);
    EXPECT_FALSE(popup.cancelled());
    ProgressModel progress = popup;
    progress.window = ProgressWindow::Progress;
    EXPECT_EQ(progress.press_cancel(), CancelEffect::Marked);
    EXPECT_TRUE(progress.cancelled());

    const TwipsRect screen{0, 0, 19200, 10800};
    EXPECT_EQ(popup_place(popup, screen), (TwipsRect{5760, 4400, 7680, 2000}));
    popup.placement = {0.5, 0.25, 0.25, 0.5};
    EXPECT_EQ(popup_place(popup, screen), (TwipsRect{9600, 2700, 4800, 5400}));
}

TEST(DebugModel, WaitPollsUntilAButtonAndShowsTheLine) {
    DebugModel m;
    const std::vector<std::string> listing =
        debug_listing({{"sub", "main", false, true}, {"print", "$a$"}});
    m.show(DebugView{&listing, {}, 2, "print 5", "Quiller v0.1.0 Debug", "job.prg"});
    EXPECT_EQ(m.num_label(), "2");
    EXPECT_EQ(m.line_label(), "print $a$");
    EXPECT_EQ(m.code_label(), "print 5");
    for (const auto& [button, action] : {std::pair{0, DebugAction::Step},
                                         {1, DebugAction::Terminate},
                                         {2, DebugAction::Continue}}) {
        int polls = 0, slept = 0;
        const EventWait w{[&] {
                              if (++polls == 3) m.press(button);
                          },
                          [&](int ms) { slept += ms; }};
        EXPECT_EQ(m.wait(w), action);
        EXPECT_EQ(slept, 200);
    }
    EXPECT_EQ(DebugModel::top_row(50, 30, 0, 100), 40);
    EXPECT_EQ(DebugModel::top_row(50, 30, 40, 100), 40);
    EXPECT_EQ(DebugModel::top_row(95, 30, 0, 100), 70);
}

TEST(ErrorWindowModel, ButtonsAndChoices) {
    ErrorWindowModel warning(Severity::Warning, "Quiller v0.1.0 Warning", "text");
    EXPECT_TRUE(warning.end_button().visible && warning.debug_button().visible);
    warning.press_debug();
    EXPECT_EQ(warning.choice(), ErrorChoice::Debug);
    warning.press_close();
    EXPECT_EQ(warning.choice(), ErrorChoice::Continue);

    ErrorWindowModel fatal(Severity::Fatal, "t", "x");
    EXPECT_FALSE(fatal.end_button().visible || fatal.debug_button().visible);
    EXPECT_EQ(fatal.choice(), ErrorChoice::EndRun);

    ErrorWindowModel choose(Severity::ChooseFile, "t", "x", "/jobs/last.prg");
    EXPECT_TRUE(choose.browse_button().visible);
    EXPECT_EQ(choose.chosen_script(), "/jobs/last.prg");
    choose.set_file_name(" other.prg ");
    EXPECT_EQ(choose.chosen_script(), "other.prg");
    choose.press_close();
    EXPECT_EQ(choose.chosen_script(), "");
}

TEST(WindowPlacement, StoredRestoredAndKeptOnScreen) {
    const auto store = make_memory_registry_store();
    RegistrySettings settings(*store);
    const TwipsRect screen{0, 0, 19200, 10800};
    const std::string key = placement_key("DisplayForm");
    EXPECT_EQ(key, "HKEY_CURRENT_USER\\Software\\Quiller\\DisplayForm");
    EXPECT_EQ(load_placement(settings, key, output_default(screen)),
              (TwipsRect{1600, 900, 16000, 9000}));
    save_placement(settings, key, {100, 200, 3000, 4000});
    settings.write(key, "Width", "wide");  // a bad value keeps its default
    EXPECT_EQ(load_placement(settings, key, {0, 0, 5, 6}), (TwipsRect{100, 200, 5, 4000}));
    EXPECT_EQ(debug_default(screen), (TwipsRect{4900, 2150, 9400, 6500}));
    EXPECT_EQ(question_place(screen, 6000, 2700), (TwipsRect{6600, 3750, 6000, 2700}));

    const std::vector<TwipsRect> screens{screen, {19200, 0, 19200, 10800}};
    const TwipsRect on_second{20000, 100, 3000, 3000};
    EXPECT_EQ(keep_on_screen(on_second, screens), on_second);
    EXPECT_EQ(keep_on_screen({50000, -900, 3000, 3000}, screens),
              (TwipsRect{35400, 0, 3000, 3000}));
    EXPECT_EQ(keep_on_screen({-9000, 12000, 30000, 20000}, {screen}),
              (TwipsRect{0, 0, 19200, 10800}));
}

// The listing's indentation comes from the statements' rows: openers if, sub, else, while,
// repeat; closers else, endif, endsub, endwhile, until; never below the margin.
TEST(EngineDebugger, ListingStepTerminateAndContinue) {
    Harness h;
    h.host.debug_actions = {DebugAction::Step, DebugAction::Terminate};
    EXPECT_EQ(
        h.run("sub main\n  debug ON\n  if 1 = 1\n    print one\n  endif\n  print two\nendsub\n"),
        0);
    EXPECT_EQ(h.host.debug_stops,
              (std::vector<std::string>{"003     if 1 = 1", "004         print one"}));
    EXPECT_TRUE(h.host.printed.empty());  // Terminate ends without running the line

    Harness c;
    c.host.debug_actions = {DebugAction::Continue};
    c.run("sub main\n  debug on\n  print one\n  print two\n  debug off\nendsub\n");
    EXPECT_EQ(c.host.debug_stops.size(), 1u);
    EXPECT_EQ(c.host.printed, (std::vector<std::string>{"one", "two"}));

    Harness b;
    b.run(
        "sub main\n debug on\n if 1 = 1\n repeat\n until 1 = 1\n else\n endif\n ifnot 1 = 2\n "
        "endif\n"
        " while 1 = 2\n endwhile\nendsub\n");
    EXPECT_EQ(
        b.host.debug_stops,
        (std::vector<std::string>{"003     if 1 = 1", "004         repeat",
                                  "005         until 1 = 1", "006     else", "008     ifnot 1 = 2",
                                  "009 endif", "010 while 1 = 2", "012 endsub"}));
}

}  // namespace
}  // namespace quiller::testing
