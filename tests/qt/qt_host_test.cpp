// The Qt windows driven as a user drives them, on the offscreen platform: a driver polls for
// the window a step waits for (exposed, and modal where the window is) and then clicks or types.
// Each main state of each window is saved as a PNG in the build folder's screenshots/.
#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <QtTest>
#include <deque>
#include <functional>

#include "../unit/scripted_host.hpp"
#include "hosts/common/registry_settings.hpp"
#include "hosts/qt/copy_form.hpp"
#include "hosts/qt/debug_form.hpp"
#include "hosts/qt/display_form.hpp"
#include "hosts/qt/progress_form.hpp"
#include "hosts/qt/qt_host.hpp"

namespace quiller::qt {
namespace {

using testing::Harness;

void shot(QWidget* w, const char* name) {
    QDir().mkpath(QUILLER_SHOTS_DIR);
    w->grab().save(QString(QUILLER_SHOTS_DIR "/") + name + ".png");
}

bool exposed(QWidget* w) {
    return w && w->isVisible() && w->windowHandle() && w->windowHandle()->isExposed();
}

// The active modal window when it is the one named and on screen.
QWidget* modal(const char* name) {
    QWidget* w = QApplication::activeModalWidget();
    return w && w->objectName() == name && exposed(w) ? w : nullptr;
}

// The active modal window when it is a T and on screen.
template <class T>
QWidget* modal_of_class() {
    auto* w = qobject_cast<T*>(QApplication::activeModalWidget());
    return w && exposed(w) ? w : nullptr;
}

template <class T>
T* child(QWidget* w, const char* name) {
    T* c = w->findChild<T*>(name);
    if (!c) qFatal("no control %s", name);
    return c;
}

void click(QWidget* w, const char* button) {
    QTest::mouseClick(child<QAbstractButton>(w, button), Qt::LeftButton);
}

// Steps run in order, each once its window is ready; polling runs inside every wait.
class Driver {
  public:
    Driver() {
        started_.start();
        schedule();
    }
    void when(std::function<QWidget*()> ready, std::function<void(QWidget*)> act) {
        steps_.push_back({std::move(ready), std::move(act)});
    }
    void when_modal(const char* name, std::function<void(QWidget*)> act) {
        when([name] { return modal(name); }, std::move(act));
    }
    bool done() const { return steps_.empty(); }

  private:
    // Each poll schedules the next first, so a step that opens a modal window of its own polls
    // on inside it.
    void schedule() {
        QTimer::singleShot(10, &context_, [this] { poll(); });
    }
    void poll() {
        schedule();
        if (started_.elapsed() > 20000)
            qFatal("a window waits that no step answers (%d steps left, %s active)",
                   int(steps_.size()),
                   QApplication::activeWindow()
                       ? qPrintable(QApplication::activeWindow()->objectName())
                       : "none");
        if (steps_.empty()) return;
        QWidget* w = steps_.front().ready();
        if (!w) return;
        auto act = std::move(steps_.front().act);
        steps_.pop_front();
        act(w);
        if (QTest::currentTestFailed()) qFatal("a step failed; the run would wait for ever");
    }
    struct Step {
        std::function<QWidget*()> ready;
        std::function<void(QWidget*)> act;
    };
    std::deque<Step> steps_;
    QObject context_;
    QElapsedTimer started_;
};

// Sleeps for real, so that a countdown can be watched and cut short.
class SleepingClock final : public Clock {
  public:
    double now() override { return 46000; }
    double monotonic_seconds() override { return 0; }
    std::int64_t utc_seconds() override { return 1795784709; }
    void sleep_ms(int ms) override { QThread::msleep(static_cast<unsigned long>(ms)); }
};

// The engine over the Qt host, an in-memory platform and an in-memory registry.
struct Desk {
    Harness h;
    RegistrySettings settings{*h.registry};
    std::vector<std::string> opened;
    QtHost host{settings, "0.1.0", services()};
    Driver driver;

    Desk() { h.platform.clock = std::make_unique<SleepingClock>(); }
    DesktopServices services() {
        DesktopServices d;
        d.open_document = [this](const std::string& f) { opened.push_back(f); };
        d.edit_file = [this](const std::string& f) { opened.push_back("edit " + f); };
        d.reference_file = "readme-quiller.htm";
        d.native_dialogs = false;
        return d;
    }
    // The debugger waiting for a button, at line `num` when one is given.
    std::function<QWidget*()> debugger_waits(const char* num = nullptr) {
        return [this, num]() -> QWidget* {
            DebugForm* w = host.debug_form();
            return exposed(w) && w->state_label->text() == "Wait" &&
                           (!num || w->num_label->text() == num)
                       ? w
                       : nullptr;
        };
    }
    // Runs the script; a step left over fails the test.
    int run(const std::string& script, const std::string& command = "job.prg") {
        h.files->files["job.prg"] = script;
        Engine engine(host, h.platform, standard_language());
        const int status = engine.run(command);
        output = engine.output().text();
        if (!driver.done()) QTest::qFail("the run ended before every step ran", __FILE__, __LINE__);
        return status;
    }
    std::string output;
};

QString text_of(QWidget* w, const char* name) {
    return child<QLabel>(w, name)->text();
}

}  // namespace

class QtWindows : public QObject {
    Q_OBJECT
  private Q_SLOTS:
    void pauseBlocksUntilOkAndRunEndsWithFinishedWindow() {
        Desk d;
        d.driver.when_modal("DisplayForm", [](QWidget* w) {
            QCOMPARE(w->windowTitle(), QString("Quiller v0.1.0"));
            QCOMPARE(text_of(w, "TitleLabel"), QString("Report"));
            QCOMPARE(child<QPlainTextEdit>(w, "OutputText")->toPlainText(),
                     QString("Hello\nTake a look"));  // "after" waits for OK
            QVERIFY(child<QPushButton>(w, "OKButton")->isEnabled());
            shot(w, "output-pause");
            click(w, "cmdAbout");
        });
        d.driver.when(modal_of_class<QMessageBox>, [](QWidget* w) {
            QVERIFY(static_cast<QMessageBox*>(w)->text().contains("Quiller v0.1.0"));
            shot(w, "about");
            static_cast<QMessageBox*>(w)->accept();
        });
        d.driver.when_modal("DisplayForm", [](QWidget* w) {
            QTest::keyClick(w, Qt::Key_Return);  // OK is the default button
        });
        d.driver.when_modal("DisplayForm", [](QWidget* w) {
            QCOMPARE(w->windowTitle(), QString("Quiller v0.1.0 - Program Finished"));
            shot(w, "output-finished");
            click(w, "OKButton");
        });
        QCOMPARE(d.run("sub main\n print Hello Report\n pause \"Take a look\"\n print after\n"
                       "endsub\n"),
                 0);
        QCOMPARE(d.output, std::string("Hello\nTake a look\nafter"));
        // The placement was stored when the window closed.
        QVERIFY(d.settings.read(placement_key("DisplayForm"), "Width").has_value());
    }

    void closeBoxEndsTheRunAndTimedPauseCountsDown() {
        Desk d;
        d.driver.when(
            [&d]() -> QWidget* {
                DisplayForm* w = d.host.display_form();
                return exposed(w) && w->windowTitle().startsWith("6 :  ") ? w : nullptr;
            },
            [](QWidget* w) {
                QCOMPARE(w->windowTitle(), QString("6 :  Quiller v0.1.0"));
                shot(w, "output-countdown");
                w->close();
            });
        QCOMPARE(d.run("sub main\n pause \"Counting\" 6\n print never\nendsub\n"), 0);
        QCOMPARE(d.output, std::string("Counting"));
    }

    void questions() {
        Desk d;
        d.driver.when_modal("AskForm", [](QWidget* w) {
            QCOMPARE(w->windowTitle(), QString("Quiller v0.1.0 Question"));
            auto* answer = child<QLineEdit>(w, "AnswerText");
            QCOMPARE(answer->echoMode(), QLineEdit::Password);
            QCOMPARE(answer->text(), QString("old"));
            QVERIFY(!child<QPushButton>(w, "Button2")->isVisible());
            answer->selectAll();
            QTest::keyClicks(answer, "s3cret");
            shot(w, "question-password");
            QTest::keyClick(answer, Qt::Key_Return);
        });
        d.driver.when_modal("AskForm", [](QWidget* w) {
            auto* no = child<QPushButton>(w, "Button2");
            QVERIFY(no->isDefault() && !child<QPushButton>(w, "Button1")->isDefault());
            QCOMPARE(child<QPushButton>(w, "Button1")->text(), QString("&Yes"));
            QVERIFY(!child<QLineEdit>(w, "AnswerText")->isVisible());
            shot(w, "question-yesno");
            QTest::keyClick(w, Qt::Key_Y, Qt::AltModifier);  // the mnemonic
        });
        d.driver.when_modal("DisplayForm", [](QWidget* w) { click(w, "OKButton"); });
        QCOMPARE(d.run("sub main\n set $p$ password \"Password?\" old\n"
                       " set $y$ askyesno \"Go on?\" no\n print \"$p$ $y$\"\nendsub\n"),
                 0);
        QCOMPARE(QString::fromStdString(d.output), QString("s3cret Yes"));
    }

    void debuggerStepAndContinue() {
        Desk d;
        d.driver.when(d.debugger_waits("3"), [](QWidget* w) {
            auto* f = static_cast<DebugForm*>(w);
            QCOMPARE(w->windowTitle(), QString("Quiller v0.1.0 Debug"));
            QCOMPARE(f->prg_list->item(3)->text(), QString("004         set $a$ 5"));
            QCOMPARE(f->prg_list->currentRow(), 2);
            QCOMPARE(f->code_label->text(), QString("if 1 = 1"));
            click(w, "StepButton0");
        });
        d.driver.when(d.debugger_waits("4"), [](QWidget* w) { click(w, "StepButton0"); });
        d.driver.when(d.debugger_waits("5"), [](QWidget* w) { click(w, "StepButton0"); });
        d.driver.when(d.debugger_waits("6"), [](QWidget* w) {
            auto* f = static_cast<DebugForm*>(w);
            QCOMPARE(f->var_list->findItems("a = 5", Qt::MatchExactly).size(), 1);
            QCOMPARE(f->code_label->text(), QString("print 5"));
            QCOMPARE(f->line_label->text(), QString("print $a$"));
            shot(w, "debugger");
            click(w, "StepButton2");  // Continue
        });
        d.driver.when_modal("DisplayForm", [&d](QWidget* w) {
            QVERIFY(!d.host.debug_form()->isVisible());  // hidden once the run went on
            click(w, "OKButton");
        });
        QCOMPARE(d.run("sub main\n debug on\n if 1 = 1\n  set $a$ 5\n endif\n print $a$\n"
                       " print two\nendsub\n"),
                 0);
        QCOMPARE(d.output, std::string("5\ntwo"));
    }

    void errorWindowEndDebugAndMessageBox() {
        Desk d;
        d.driver.when_modal("MessageBox", [](QWidget* w) {
            QVERIFY(static_cast<QMessageBox*>(w)->text().startsWith(
                "Replace Vars - Closing delimeter not found (%)"));
            shot(w, "message-box");
            static_cast<QMessageBox*>(w)->button(QMessageBox::Ok)->click();
        });
        d.driver.when_modal("ErrorForm", [](QWidget* w) {
            QCOMPARE(w->windowTitle(), QString("Quiller v0.1.0 Warning"));
            QVERIFY(text_of(w, "MessageLabel").endsWith("Press OK to continue."));
            QVERIFY(child<QPushButton>(w, "DebugButton")->isVisible());
            shot(w, "error-warning");
            click(w, "DebugButton");
        });
        // Terminate: the line never runs.
        d.driver.when(d.debugger_waits("4"), [](QWidget* w) { click(w, "StepButton1"); });
        QCOMPARE(d.run("sub main\n print 50%\n bogus\n print never\nendsub\n"), 0);
        QCOMPARE(d.output, std::string());

        Desk e;
        e.driver.when_modal("ErrorForm", [](QWidget* w) { click(w, "EndButton"); });
        QCOMPARE(e.run("sub main\n bogus\n print never\nendsub\n"), 1);
    }

    void choosingAScriptWithBrowse() {
        const QString dir = QDir::temp().filePath("quiller-qt-test");
        QDir().mkpath(dir);
        QFile(dir + "/picked.prg").open(QIODevice::WriteOnly);
        Desk d;
        d.h.files->files[(dir + "/picked.prg").toStdString()] = "sub main\nendsub\n";
        d.settings.write("HKEY_CURRENT_USER\\Software\\Quiller", "LastPrg",
                         (dir + "/last.prg").toStdString());
        d.driver.when_modal("ErrorForm", [](QWidget* w) {
            QVERIFY(w->windowTitle().endsWith(" : Choose a .PRG file to run"));
            QVERIFY(child<QLineEdit>(w, "FileName")->text().endsWith("/last.prg"));
            shot(w, "choose-script");
            click(w, "BrowseButton");
        });
        d.driver.when(modal_of_class<QFileDialog>, [](QWidget* w) {
            shot(w, "choose-script-browse");
            auto* dialog = static_cast<QFileDialog*>(w);
            QVERIFY(dialog->nameFilters().front().contains("*.prg"));
            auto* name = child<QLineEdit>(dialog, "fileNameEdit");
            name->setText("picked.prg");
            QTest::keyClick(name, Qt::Key_Return);
        });
        d.driver.when_modal("ErrorForm", [](QWidget* w) {
            QVERIFY(child<QLineEdit>(w, "FileName")->text().endsWith("/picked.prg"));
            click(w, "OKButton");
        });
        d.run("", "");
        QCOMPARE(d.settings.read("HKEY_CURRENT_USER\\Software\\Quiller", "LastPrg").value(),
                 (dir + "/picked.prg").toStdString());
    }

    void progressWindowsCancel() {
        Desk d;
        ProgressModel m;
        m.title = "Copying";
        m.unit = "files";
        m.total = 40;
        m.done = 12;
        d.host.progress_show(m.title, m.unit);
        d.host.progress_update(m);
        ProgressForm* p = d.host.progress_form(ProgressWindow::Progress);
        QVERIFY(QTest::qWaitForWindowExposed(p));
        QCOMPARE(p->windowTitle(), QString("Progress Indicator"));
        QCOMPARE(p->copy_bar->percent(), 30);
        shot(p, "progress");
        click(p, "cmdCancel");
        QVERIFY(d.host.progress_cancelled() && p->isVisible());  // marked only
        d.host.progress_close();

        m.window = ProgressWindow::Popup;
        m.info = "C:\\Data";
        m.placement = {0.1, 0.1, 0.5, std::nullopt};
        d.host.popup_show(m);
        ProgressForm* popup = d.host.progress_form(ProgressWindow::Popup);
        QVERIFY(QTest::qWaitForWindowExposed(popup));
        QCOMPARE(popup->width(), 400);  // half of the 800-pixel screen
        shot(popup, "popup");
        click(popup, "cmdCancel");
        QVERIFY_THROWS_EXCEPTION(EndProgram, d.host.process_events());
    }

    void placementRestoredAndKeptOnScreen() {
        Desk d;
        const std::string key = placement_key("DisplayForm");
        save_placement(d.settings, key, {1500, 750, 6000, 4500});
        d.driver.when_modal("DisplayForm", [](QWidget* w) {
            QCOMPARE(w->pos(), QPoint(100, 50));
            QCOMPARE(w->size(), QSize(400, 300));
            w->move(120, 60);
            QTRY_COMPARE(w->pos(), QPoint(120, 60));
            click(w, "OKButton");
        });
        d.run("sub main\n print hi\nendsub\n");
        QCOMPARE(QString::fromStdString(d.settings.read(key, "Left").value()), QString("1800"));

        save_placement(d.settings, placement_key("CopyForm"), {-90000, 900, 3000, 3000});
        CopyForm copy(d.settings);
        copy.open();
        QVERIFY(QTest::qWaitForWindowExposed(&copy));
        QCOMPARE(copy.pos().x(), 0);  // off every screen: moved onto it
        copy.close();
        QCOMPARE(d.settings.read(placement_key("CopyForm"), "WindowState").value(),
                 std::string("0"));
    }
};

}  // namespace quiller::qt

QTEST_MAIN(quiller::qt::QtWindows)
#include "qt_host_test.moc"
