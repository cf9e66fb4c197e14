// The Win32 windows driven as a user drives them, under Wine in a virtual desktop.
#include <windows.h>
// after windows.h
#include <commctrl.h>
#include <gtest/gtest.h>

#include <fstream>
#include <thread>

#include "gui_session.hpp"
#include "hosts/win32/control_ids.hpp"
#include "hosts/win32/file_association.hpp"
#include "os/registry_path.hpp"
#include "os/win32/win32_platform.hpp"
#include "version.hpp"

namespace quiller::win32::test {
namespace {

const std::string kCaption = "Quiller v" + std::to_string(kVersionMajor) + "." +
                             std::to_string(kVersionMinor) + "." + std::to_string(kVersionRevision);

class Gui : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!running_under_wine()) GTEST_SKIP() << "runs only inside Wine's own registry";
        clear_settings();
    }
};

bool is_default_style(HWND window, int id) {
    return (GetWindowLongW(GetDlgItem(window, id), GWL_STYLE) & 0x0F) == BS_DEFPUSHBUTTON;
}

// OK on the output window once the run has ended.
void finish(Driver& d, HWND out) {
    ASSERT_TRUE(d.wait_text(out, 0, kCaption + " - Program Finished"));
    d.click(out, ids::kOkButton);
}

// The list view's rows, each followed by "|", from a leading "|".
std::string narrow_entries(HWND vars) {
    std::string out = "|";
    for (int i = 0; i < ListView_GetItemCount(vars); ++i) {
        wchar_t entry[256] = {};
        LVITEMW it{};
        it.pszText = entry;
        it.cchTextMax = 256;
        SendMessageW(vars, LVM_GETITEMTEXTW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&it));
        out += narrow(entry) + "|";
    }
    return out;
}

TEST_F(Gui, OutputWindowPrintsPausesAndFinishes) {
    Session s;
    const int status =
        s.run({"sub main", "print \"first line\" \"Greeting\"", "print \"second line\"",
               "pause \"Check the lines\"", "print \"on top\" {insert}", "print \"\"", "endsub"},
              [&](Driver& d) {
                  HWND w = d.window_with(ids::kOutputText);
                  EXPECT_EQ(Driver::text(w), kCaption);
                  EXPECT_EQ(Driver::text(w, ids::kTitleLabel), "Greeting");
                  EXPECT_TRUE(d.wait_text(w, ids::kOutputText,
                                          "first line\r\nsecond line\r\nCheck the lines"));
                  EXPECT_EQ(Driver::default_button(w), ids::kOkButton);
                  d.shot(w, "win32-displayform-pause");
                  // The pause holds the script: nothing is inserted until OK (Enter).
                  Sleep(300);
                  EXPECT_EQ(Driver::text(w, ids::kOutputText).find("on top"), std::string::npos);
                  d.click(w, ids::kOpenButton);
                  d.key(VK_RETURN);
                  ASSERT_TRUE(d.wait_text(w, 0, kCaption + " - Program Finished"))
                      << Driver::text(w) << " focus " << GetDlgCtrlID(d.focus());
                  EXPECT_EQ(Driver::text(w, ids::kOutputText).rfind("on top\r\nfirst line", 0), 0u);
                  d.shot(w, "win32-displayform-finished");
                  d.click(w, ids::kOkButton);
              });
    EXPECT_EQ(status, 0);
    ASSERT_EQ(s.processes->commands.size(), 1u);
    const std::string& open = s.processes->commands[0];
    ASSERT_EQ(open.rfind("notepad.exe ", 0), 0u);
    EXPECT_EQ(open.substr(open.size() - 4), ".txt");
    EXPECT_EQ(s.read_file(open.substr(12)),
              "Greeting\r\nfirst line\r\nsecond line\r\nCheck the lines\r\n");
}

TEST_F(Gui, CountdownInTheCaptionAndTheCloseBoxEndsTheRun) {
    Session s;
    const std::string after = s.temp_path("quiller-gui-after.txt");
    DeleteFileW(std::wstring(after.begin(), after.end()).c_str());
    const int status = s.run({"sub main", "print \"working\"", "pause \"Wait a moment\" 30",
                              "printtofile \"" + after + "\"", "endsub"},
                             [&](Driver& d) {
                                 HWND w = d.window_with(ids::kOutputText);
                                 ASSERT_TRUE(d.wait_text(w, 0, "29 :  " + kCaption))
                                     << Driver::text(w);
                                 d.shot(w, "win32-displayform-countdown");
                                 PostMessageW(w, WM_CLOSE, 0, 0);
                             });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(GetFileAttributesA(after.c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(Gui, QuestionWindowAsksForTextAndPassword) {
    Session s;
    s.run({"sub main", "set $a$ ask \"Your name?\" \"Ann\"",
           "set $p$ ask \"Secret?\" \"\" password", "print \"$a$/$p$\"", "endsub"},
          [](Driver& d) {
              HWND w = d.window_with(ids::kAnswerText);
              EXPECT_EQ(Driver::text(w), kCaption + " Question");
              EXPECT_EQ(Driver::text(w, ids::kQuestionLabel), "Your name?");
              EXPECT_EQ(Driver::text(w, ids::kAnswerText), "Ann");
              EXPECT_EQ(Driver::text(w, ids::kButton1), "&OK");
              EXPECT_FALSE(Driver::shown(w, ids::kButton2));
              EXPECT_TRUE(d.wait_focus(GetDlgItem(w, ids::kAnswerText)));
              d.type("e");  // the caret stands after the default
              d.shot(w, "win32-askform-text");
              d.key(VK_TAB);
              EXPECT_TRUE(d.wait_focus(GetDlgItem(w, ids::kButton1)));
              d.key(VK_RETURN);
              ASSERT_TRUE(d.wait_gone(w));
              HWND p = d.window_with(ids::kAnswerText);
              EXPECT_EQ(SendMessageW(GetDlgItem(p, ids::kAnswerText), EM_GETPASSWORDCHAR, 0, 0),
                        '*');
              d.type("s3");
              d.click(p, ids::kButton1);
              HWND out = d.window_with(ids::kOutputText);
              EXPECT_TRUE(d.wait_text(out, ids::kOutputText, "Anne/s3"))
                  << Driver::text(out, ids::kOutputText);
              finish(d, out);
          });
}

TEST_F(Gui, QuestionWindowYesNoDefaultsMnemonicsAndEsc) {
    Session s;
    s.run({"sub main", "set $a$ askyesno \"Go on?\" YES", "set $b$ askyesno \"Really?\"",
           "set $c$ askyesno \"Sure?\" yes", "print \"$a$/$b$/$c$.\"", "endsub"},
          [](Driver& d) {
              HWND w = d.window_with(ids::kButton1);
              EXPECT_EQ(Driver::text(w, ids::kButton1), "&Yes");
              EXPECT_EQ(Driver::text(w, ids::kButton2), "&No");
              EXPECT_FALSE(Driver::shown(w, ids::kAnswerText));
              EXPECT_TRUE(is_default_style(w, ids::kButton1));
              EXPECT_TRUE(d.wait_focus(GetDlgItem(w, ids::kButton1)));
              d.shot(w, "win32-askform-yesno");
              d.key(VK_RETURN);  // the default: Yes
              ASSERT_TRUE(d.wait_gone(w));
              HWND w2 = d.window_with(ids::kButton1);
              EXPECT_TRUE(is_default_style(w2, ids::kButton2));
              d.alt('y');  // the mnemonic of "&Yes"
              ASSERT_TRUE(d.wait_gone(w2));
              d.window_with(ids::kButton1);  // the third question
              d.key(VK_ESCAPE);              // Esc, as the close box, answers nothing
              HWND out = d.window_with(ids::kOutputText);
              EXPECT_TRUE(d.wait_text(out, ids::kOutputText, "Yes/Yes/."));
              finish(d, out);
          });
}

TEST_F(Gui, WarningOffersOkEndAndDebug) {
    Session s;
    // End ends the run: the print after the line never opens the output window.
    s.run({"sub main", "frobnicate now", "print \"not reached\"", "endsub"}, [](Driver& d) {
        HWND w = d.window_with(ids::kErrorText);
        EXPECT_EQ(Driver::text(w), kCaption + " Warning");
        const std::string text = Driver::text(w, ids::kErrorText);
        EXPECT_NE(text.find("Line 2= frobnicate now"), std::string::npos) << text;
        EXPECT_NE(text.find("There was a problem with the line shown above.\r\nPress OK to "
                            "continue."),
                  std::string::npos);
        EXPECT_TRUE(Driver::shown(w, ids::kErrorEnd) && Driver::shown(w, ids::kErrorDebug));
        EXPECT_EQ(Driver::default_button(w), ids::kErrorOk);
        d.shot(w, "win32-error-warning");
        d.click(w, ids::kErrorEnd);
    });
}

TEST_F(Gui, FileChoosingModeRunsTheChosenScriptAndRemembersIt) {
    Session s;
    const std::string chosen = s.temp_path("quiller-gui-chosen.prg");
    std::ofstream(chosen) << "sub main\r\nendsub\r\n";
    RegistryData last{reg_type::kSz, "C:\\old.prg"};
    s.platform.registry->write_value(
        parse_registry_path("HKEY_CURRENT_USER\\Software\\Quiller").ref(), "LastPrg", last);
    const int status = s.run_command("", [&](Driver& d) {
        HWND w = d.window_with(ids::kFileName);
        EXPECT_EQ(Driver::text(w), kCaption + " : Choose a .PRG file to run");
        EXPECT_EQ(Driver::text(w, ids::kFileName), "C:\\old.prg");
        EXPECT_TRUE(Driver::shown(w, ids::kBrowseButton));
        d.shot(w, "win32-error-choose-file");
        SetWindowTextA(GetDlgItem(w, ids::kFileName), chosen.c_str());
        d.key(VK_RETURN);
    });
    EXPECT_EQ(status, 0);
    RegistryData stored;
    s.platform.registry->read_value(
        parse_registry_path("HKEY_CURRENT_USER\\Software\\Quiller").ref(), "LastPrg", stored);
    EXPECT_EQ(stored.bytes, chosen);
}

TEST_F(Gui, DebuggerStepsContinuesTerminatesAndOpensItsHelpers) {
    Session s;
    const std::string after = s.temp_path("quiller-gui-terminated.txt");
    DeleteFileA(after.c_str());
    s.run({"sub main", "debug on", "$x$ = 1", "if $x$ = 1", "$x$ = 2", "endif", "print \"x=$x$\"",
           "pause \"Go on\"", "debug ON", "printtofile \"" + after + "\"", "endsub"},
          [&](Driver& d) {
              HWND w = d.window_with(ids::kPrgList);
              EXPECT_EQ(Driver::text(w), kCaption + " Debug");
              HWND list = GetDlgItem(w, ids::kPrgList);
              EXPECT_EQ(SendMessageW(list, LB_GETCOUNT, 0, 0), 11);
              EXPECT_EQ(SendMessageW(list, LB_GETCURSEL, 0, 0), 2);
              EXPECT_EQ(Driver::text(w, ids::kNumLabel), "3");
              EXPECT_EQ(Driver::default_button(w), ids::kStepButton);
              d.click(w, ids::kStepButton);
              ASSERT_TRUE(d.wait_text(w, ids::kNumLabel, "4"));
              d.click(w, ids::kStepButton);
              ASSERT_TRUE(d.wait_text(w, ids::kNumLabel, "5"));
              const std::string vars = narrow_entries(GetDlgItem(w, ids::kVariables));
              EXPECT_NE(vars.find("|x = 1|"), std::string::npos) << vars;
              // The splitter moves the border between the listing and the variables.
              RECT before{};
              GetWindowRect(list, &before);
              HWND bar = GetDlgItem(w, ids::kSplitter);
              SendMessageW(bar, WM_LBUTTONDOWN, MK_LBUTTON, 0);
              SendMessageW(bar, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(static_cast<WORD>(-60), 5));
              SendMessageW(bar, WM_LBUTTONUP, 0, 0);
              RECT after{};
              GetWindowRect(list, &after);
              EXPECT_LT(after.right - after.left, before.right - before.left);
              d.shot(w, "win32-debugform");
              d.click(w, ids::kEditButton);
              d.click(w, ids::kReferenceButton);
              d.click(w, ids::kContinueButton);
              HWND out = d.window_with(ids::kOutputText);
              EXPECT_TRUE(d.wait_text(out, ids::kOutputText, "x=2\r\nGo on"));
              EXPECT_FALSE(IsWindowVisible(w));  // hidden when the script ran on
              d.click(out, ids::kOkButton);
              // Terminate ends the run without running the line.
              HWND again = d.window_with(ids::kPrgList);
              ASSERT_TRUE(d.wait_text(again, ids::kNumLabel, "10"));
              d.click(again, ids::kTerminateButton);
          });
    EXPECT_EQ(GetFileAttributesA(after.c_str()), INVALID_FILE_ATTRIBUTES);
    ASSERT_EQ(s.processes->commands.size(), 2u);
    EXPECT_EQ(s.processes->commands[0], "notepad.exe " + s.script);
    EXPECT_EQ(s.processes->commands[1], "open " + program_folder() + "\\readme-quiller.htm");
}

TEST_F(Gui, PlacementIsStoredAndRestored) {
    {
        Session s;
        s.run({"sub main", "printwindow 1440 720 7200 4320", "print \"placed\"", "endsub"},
              [](Driver& d) {
                  HWND w = d.window_with(ids::kOutputText);
                  RECT r{};
                  GetWindowRect(w, &r);
                  EXPECT_EQ(r.left, 96);
                  EXPECT_EQ(r.top, 48);
                  EXPECT_EQ(r.right - r.left, 480);
                  SetWindowPos(w, nullptr, 150, 60, 500, 300, SWP_NOZORDER);
                  d.click(w, ids::kOkButton);
              });
    }
    Session reader;
    RegistrySettings settings(*reader.platform.registry);
    const std::string key = "HKEY_CURRENT_USER\\Software\\Quiller\\DisplayForm";
    EXPECT_EQ(settings.read(key, "Left").value_or(""), "2250");
    EXPECT_EQ(settings.read(key, "Height").value_or(""), "4500");
    Session s;
    s.run({"sub main", "print \"again\"", "endsub"}, [](Driver& d) {
        HWND w = d.window_with(ids::kOutputText);
        RECT r{};
        GetWindowRect(w, &r);
        EXPECT_EQ(r.left, 150);
        EXPECT_EQ(r.bottom - r.top, 300);
        finish(d, w);
    });
}

TEST_F(Gui, PopupCancelEndsTheProgramProgressCancelOnlyMarks) {
    Session s;
    ProgressModel popup;
    popup.window = ProgressWindow::Popup;
    popup.title = "Scanning C:\\Data";
    popup.info = "Reading the folders";
    popup.unit = "files";
    popup.total = 400;
    popup.done = 150;
    popup.start_timer(0);
    popup.now = 10;
    DWORD ui = GetCurrentThreadId();
    std::thread cancel([&] {
        Driver(ui).run([](Driver& d) {
            HWND w = d.window_with(ids::kCopyBar);
            EXPECT_EQ(Driver::text(w, ids::kTimeLabel),
                      "150 of 400 files (15.0 files/sec) 17 remaining");
            d.shot(w, "win32-frmpopup");
            d.click(w, ids::kCancelButton);
        });
    });
    s.host->popup_show(popup);
    const auto update_for_ten_seconds = [&] {
        for (int i = 0; i < 200; ++i) {
            s.host->progress_update(popup);
            Sleep(50);
        }
    };
    EXPECT_THROW(update_for_ten_seconds(), EndProgram);
    cancel.join();
    s.host->popup_close();

    ProgressModel progress;
    progress.title = "Copying";
    progress.unit = "files";
    progress.total = 10;
    progress.start_timer(0);
    std::thread mark([&] {
        Driver(ui).run([](Driver& d) {
            HWND w = d.window_with(ids::kCopyBar);
            EXPECT_EQ(Driver::text(w), "Progress Indicator");
            EXPECT_TRUE(d.wait_text(w, ids::kProgressTitle, "Copying"));
            d.shot(w, "win32-frmprogress");
            d.click(w, ids::kCancelButton);
        });
    });
    s.host->progress_show("Copying", "files");
    for (int i = 0; i < 200 && !s.host->progress_cancelled(); ++i) {
        progress.done = i % 10;
        progress.now = 1 + i * 0.05;
        s.host->progress_update(progress);
        Sleep(50);
    }
    mark.join();
    EXPECT_TRUE(s.host->progress_cancelled());
    s.host->progress_close();
}

TEST_F(Gui, RegisterWritesOnlyThePerUserAssociation) {
    const std::wstring exe = L"C:\\Tools\\quiller.exe";
    ASSERT_EQ(register_prg_association(exe), 0);
    wchar_t value[512] = {};
    DWORD size = sizeof value;
    ASSERT_EQ(
        RegGetValueW(HKEY_CURRENT_USER, L"Software\\Classes\\Quiller.Script\\shell\\open\\command",
                     nullptr, RRF_RT_REG_SZ, nullptr, value, &size),
        ERROR_SUCCESS);
    EXPECT_EQ(std::wstring(value), L"\"C:\\Tools\\quiller.exe\" \"%1\" %*");
    size = sizeof value;
    RegGetValueW(HKEY_CURRENT_USER, L"Software\\Classes\\.prg", nullptr, RRF_RT_REG_SZ, nullptr,
                 value, &size);
    EXPECT_EQ(std::wstring(value), kProgId);
    HKEY machine = nullptr;
    EXPECT_NE(RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\Quiller.Script", 0, KEY_READ,
                            &machine),
              ERROR_SUCCESS);
    ASSERT_EQ(unregister_prg_association(), 0);
    HKEY gone = nullptr;
    EXPECT_NE(
        RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Classes\\Quiller.Script", 0, KEY_READ, &gone),
        ERROR_SUCCESS);
}

}  // namespace
}  // namespace quiller::win32::test
