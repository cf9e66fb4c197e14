#include "hosts/qt/qt_host.hpp"

#include <QApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QFile>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <algorithm>

#include "hosts/qt/ask_form.hpp"
#include "hosts/qt/debug_form.hpp"
#include "hosts/qt/display_form.hpp"
#include "hosts/qt/error_form.hpp"
#include "hosts/qt/progress_form.hpp"
#include "ui/error_window_model.hpp"
#include "ui/question_model.hpp"

namespace quiller::qt {
namespace {

QString q(std::string_view s) {
    return QString::fromUtf8(s.data(), static_cast<int>(s.size()));
}

// Sleeps on the event loop: events keep running while it waits.
void sleep_on_events(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void centre_on_screen(QWidget& w, int raise_twips = 0) {
    w.adjustSize();
    const TwipsRect r =
        centred(primary_screen(), to_twips(w.width()), to_twips(w.height()), raise_twips);
    w.move(to_pixels(r.left), to_pixels(r.top));
}

}  // namespace

QtHost::QtHost(SettingsStore& settings, std::string version, DesktopServices desktop)
    : settings_(settings),
      version_(std::move(version)),
      desktop_(std::move(desktop)),
      display_place_(settings, placement_key("DisplayForm")),
      debug_place_(settings, placement_key("DebugForm")),
      popup_place_(settings, placement_key("frmPopup", kVendorKey)),
      progress_place_(settings, placement_key("frmProgress", kVendorKey)) {}

QtHost::~QtHost() {
    close_all();
}

void QtHost::close_all() {
    close_progress(ProgressWindow::Popup);
    close_progress(ProgressWindow::Progress);
    debug_hide();
    debug_.reset();
    if (display_) {
        display_place_.save(*display_);
        display_->on_close = nullptr;
        display_.reset();
    }
}

// --- Events and waits ------------------------------------------------------------------------

void QtHost::end_if_requested() {
    if (end_requested_ && !finishing_) throw EndProgram{*end_requested_};
}

void QtHost::process_events() {
    QApplication::processEvents();
    last_pump_ms_ = QDateTime::currentMSecsSinceEpoch();
    end_if_requested();
}

void QtHost::pump(bool force) {
    const long long now = QDateTime::currentMSecsSinceEpoch();
    if (force || now - last_pump_ms_ >= 30) process_events();
}

void QtHost::wait_until(const std::function<bool()>& done) {
    QEventLoop loop;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done() || end_requested_) loop.quit();
    });
    poll.start(kEventSliceMs / 4);
    if (!done() && !end_requested_) loop.exec();
    end_if_requested();
}

// --- Output window ---------------------------------------------------------------------------

DisplayForm& QtHost::display(const OutputModel& model) {
    output_ = &model;
    if (display_) return *display_;
    display_ = std::make_unique<DisplayForm>();
    display_place_.restore(*display_, output_default(primary_screen()));
    display_->on_ok = [this] {
        dismissed_ = true;
        display_->hide();
    };
    display_->on_close = [this] {
        const bool visible = display_->isVisible();
        display_place_.save(*display_);
        if (visible) end_requested_ = 0;  // the user's way to stop a script
    };
    QObject::connect(display_->open_button, &QPushButton::clicked, display_.get(),
                     [this] { save_output_to_temp_and_open(); });
    QObject::connect(display_->about_button, &QPushButton::clicked, display_.get(),
                     [this] { show_about(display_.get()); });
    return *display_;
}

void QtHost::save_output_to_temp_and_open() {
    if (!output_ || !desktop_.temp_text_file) return;
    const std::string name = desktop_.temp_text_file();
    QFile file(q(name));
    if (name.empty() || !file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) return;
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    const std::string image = output_->file_image("\n");
    file.write(image.data(), static_cast<qint64>(image.size()));
    file.close();
    if (desktop_.open_document) desktop_.open_document(name);
}

void QtHost::output_printed(const OutputModel& model, std::string_view) {
    DisplayForm& w = display(model);
    w.show_model(model);
    if (!w.isVisible()) w.show();
    pump();
}

void QtHost::output_notice(const OutputModel& model, std::string_view) {
    DisplayForm& w = display(model);
    w.show_model(model);
    if (!w.isVisible()) w.show();
    pump(true);
}

void QtHost::output_refresh(const OutputModel& model) {
    if (display_) display_->show_model(model);
}

bool QtHost::output_visible(const OutputModel&) {
    return display_ && display_->isVisible();
}

bool QtHost::output_dismissed() {
    return std::exchange(dismissed_, false);
}

void QtHost::output_place(int left, int top, int width, int height) {
    if (!display_) return;  // the next opening reads the stored placement
    display_place_.apply(*display_, keep_on_screen({left, top, width, height}, all_screens()));
}

// Shows the output window modally until OK hides it (or the close box ends the program); a
// window that was showing before shows again, modeless.
void QtHost::output_pause(const OutputModel& model, std::string_view) {
    DisplayForm& w = display(model);
    const bool was_visible = w.isVisible();
    show_output_modally(model);
    w.setWindowModality(Qt::NonModal);
    if (was_visible) w.show();
}

void QtHost::show_output_modally(const OutputModel& model) {
    DisplayForm& w = display(model);
    w.hide();
    w.show_model(model);
    w.setWindowModality(Qt::ApplicationModal);
    w.show();
    w.activateWindow();
    w.ok_button->setFocus();
    wait_until([&] { return !w.isVisible(); });
}

void QtHost::output_finished(const OutputModel& model) {
    finishing_ = true;  // the close box now only closes
    show_output_modally(model);
    finishing_ = false;
    end_requested_.reset();  // the run is over either way
    close_all();
}

// --- Questions, errors, message boxes --------------------------------------------------------

std::string QtHost::ask(const Question& question) {
    QuestionModel model(question);
    AskForm form(model, question.caption);
    const TwipsRect r =
        question_place(primary_screen(), question_design::kWidth, question_design::kHeight);
    form.move(to_pixels(r.left), to_pixels(r.top));
    form.exec();
    end_if_requested();
    return model.answer();
}

ErrorChoice QtHost::show_error(Severity severity, std::string_view title, std::string_view text) {
    ErrorWindowModel model(severity, title, text);
    ErrorForm form(model, desktop_.native_dialogs);
    centre_on_screen(form, 300);
    form.exec();
    end_if_requested();
    return model.choice();
}

std::string QtHost::choose_script(std::string_view title, std::string_view text,
                                  std::string_view last_script) {
    ErrorWindowModel model(Severity::ChooseFile, title, text, last_script);
    ErrorForm form(model, desktop_.native_dialogs);
    centre_on_screen(form, 300);
    form.exec();
    return model.chosen_script();
}

MessageBoxResult QtHost::message_box(std::string_view text, std::string_view title,
                                     MessageBoxButtons buttons) {
    QMessageBox box(QMessageBox::Warning, q(title), q(text),
                    buttons == MessageBoxButtons::OkCancel ? QMessageBox::Ok | QMessageBox::Cancel
                                                           : QMessageBox::Ok);
    box.setObjectName("MessageBox");
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    const int answer = box.exec();
    end_if_requested();
    return answer == QMessageBox::Cancel ? MessageBoxResult::Cancel : MessageBoxResult::Ok;
}

void QtHost::show_about(QWidget* parent) {
    QMessageBox::about(parent, QObject::tr("About Quiller"), q(about_text(version_)));
}

// --- Debugger --------------------------------------------------------------------------------

DebugAction QtHost::debug_stop(const DebugView& view) {
    if (!debug_) {
        debug_ = std::make_unique<DebugForm>(debug_model_);
        debug_place_.restore(*debug_, debug_default(primary_screen()));
        debug_->on_step_button = [this](int) { debug_place_.save(*debug_); };
        debug_->on_about = [this] { show_about(debug_.get()); };
        debug_->on_reference = [this] {
            if (desktop_.open_document) desktop_.open_document(desktop_.reference_file);
        };
    }
    const std::string script = view.script_file;
    debug_->on_edit = [this, script] {
        if (desktop_.edit_file) desktop_.edit_file(script);
    };
    debug_->show_view(view);
    if (!debug_->isVisible()) debug_->show();
    debug_->raise();
    debug_->activateWindow();
    const EventWait wait{[this] { process_events(); }, sleep_on_events};
    return debug_model_.wait(wait);
}

void QtHost::debug_hide() {
    if (!debug_ || !debug_->isVisible()) return;
    debug_place_.save(*debug_);
    debug_->hide();
}

// --- Progress windows ------------------------------------------------------------------------

ProgressForm* QtHost::progress_form(ProgressWindow kind) {
    return (kind == ProgressWindow::Popup ? popup_ : progress_).get();
}

ProgressForm& QtHost::progress(ProgressWindow kind) {
    std::unique_ptr<ProgressForm>& form = kind == ProgressWindow::Popup ? popup_ : progress_;
    if (form) return *form;
    form = std::make_unique<ProgressForm>(kind);
    form->setWindowTitle(q("Quiller v" + version_));
    if (kind == ProgressWindow::Popup) {
        form->on_cancel = [this] {
            ProgressModel m;
            m.window = ProgressWindow::Popup;
            if (m.press_cancel() == CancelEffect::EndProgram) end_requested_ = 0;
        };
    } else {
        form->on_cancel = [this] { progress_model_.press_cancel(); };
    }
    return *form;
}

void QtHost::close_progress(ProgressWindow kind) {
    std::unique_ptr<ProgressForm>& form = kind == ProgressWindow::Popup ? popup_ : progress_;
    if (!form) return;
    (kind == ProgressWindow::Popup ? popup_place_ : progress_place_).save(*form);
    form.reset();
}

void QtHost::progress_show(std::string_view title, std::string_view unit) {
    progress_model_ = ProgressModel{};
    progress_model_.title = title;
    progress_model_.unit = unit;
    progress_model_.bar_visible = true;
    ProgressForm& w = progress(ProgressWindow::Progress);
    progress_place_.restore(w, progress_place(primary_screen()));
    w.show_model(progress_model_);
    w.show();
    pump(true);
}

void QtHost::progress_update(const ProgressModel& model) {
    ProgressForm& w = progress(model.window);
    if (model.window == ProgressWindow::Progress) {
        const std::string tag = progress_model_.cancel_tag;
        progress_model_ = model;
        progress_model_.cancel_tag = tag;
        progress_model_.bar_visible = true;
    }
    w.show_model(model.window == ProgressWindow::Progress ? progress_model_ : model);
    if (!w.isVisible()) w.show();
    process_events();
}

void QtHost::progress_close() {
    close_progress(ProgressWindow::Progress);
}

bool QtHost::progress_cancelled() {
    return progress_model_.cancelled();
}

void QtHost::popup_show(const ProgressModel& model) {
    const bool is_new = !popup_;
    ProgressForm& w = progress(ProgressWindow::Popup);
    const bool placed = std::any_of(model.placement.begin(), model.placement.end(),
                                    [](const auto& v) { return v.has_value(); });
    if (placed)
        popup_place_.apply(w, popup_place(model, primary_screen()));
    else if (is_new)
        popup_place_.restore(w, popup_place(model, primary_screen()));
    w.show_model(model);
    if (!w.isVisible()) w.show();
    pump(true);
}

void QtHost::popup_close() {
    close_progress(ProgressWindow::Popup);
}

}  // namespace quiller::qt
