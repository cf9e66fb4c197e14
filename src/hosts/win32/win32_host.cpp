#include "hosts/win32/win32_host.hpp"

#include "hosts/win32/debug_window.hpp"
#include "hosts/win32/error_window.hpp"
#include "hosts/win32/message_loop.hpp"
#include "hosts/win32/output_window.hpp"
#include "hosts/win32/progress_window.hpp"
#include "hosts/win32/question_window.hpp"
#include "hosts/win32/win32_ui.hpp"
#include "os/win32/win32_platform.hpp"
#include "ui/error_window_model.hpp"
#include "version.hpp"

namespace quiller::win32 {

std::string program_folder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const std::size_t slash = path.find_last_of(L"\\/");
    return narrow(slash == std::wstring::npos ? std::wstring() : path.substr(0, slash));
}

void open_in_notepad(HostContext& c, const std::string& file) {
    c.processes.shell_command("notepad.exe " + file, false, WindowState::Normal);
}

void show_about(HostContext& c, HWND owner) {
    const std::wstring text = widen(about_text(c.version));
    MSGBOXPARAMSW box{};
    box.cbSize = sizeof box;
    box.hwndOwner = owner;
    box.hInstance = GetModuleHandleW(nullptr);
    box.lpszText = text.c_str();
    box.lpszCaption = L"About Quiller";
    box.dwStyle = MB_OK | MB_USERICON;
    box.lpszIcon = MAKEINTRESOURCEW(1);
    MessageBoxIndirectW(&box);
}

Win32Host::Win32Host(SettingsStore& settings, Processes& processes, FileSystem& files)
    : c_{settings,
         processes,
         files,
         std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "." +
             std::to_string(kVersionRevision),
         program_folder(),
         {}} {}

Win32Host::~Win32Host() = default;

void Win32Host::check_end() {
    if (!c_.end_requested) return;
    c_.end_requested = false;  // once: the clean-up that follows may pump messages again
    throw EndProgram{0};
}

void Win32Host::process_events() {
    pump_messages();
    check_end();
}

OutputWindow& Win32Host::output() {
    if (!output_) output_ = std::make_unique<OutputWindow>(c_);
    return *output_;
}

void Win32Host::output_printed(const OutputModel& model, std::string_view) {
    OutputWindow& w = output();
    w.update(model);
    if (!w.visible()) w.present();
    process_events();
}

// The modal pause: the window shows with OK enabled and holds the script until OK; a window
// that was visible before shows again afterwards.
void Win32Host::output_pause(const OutputModel& model, std::string_view) {
    OutputWindow& w = output();
    const bool was_visible = w.visible();
    w.update(model);
    w.take_ok();
    w.present();
    run_modal(w.hwnd(), [&] { return !w.loaded() || !w.visible() || c_.end_requested; });
    w.take_ok();
    check_end();
    if (was_visible && w.loaded()) w.present();
}

// Only a window still on screen waits for OK at the end: one hidden by OK stays hidden.
void Win32Host::output_finished(const OutputModel& model) {
    if (!output_ || !output_->visible()) return;
    OutputWindow& w = *output_;
    w.update(model);
    w.present();
    run_modal(w.hwnd(), [&] { return !w.loaded() || !w.visible(); });
    w.save_and_unload();
    c_.end_requested = false;  // the run is over either way
}

void Win32Host::output_notice(const OutputModel& model, std::string_view) {
    output_refresh(model);
}

void Win32Host::output_refresh(const OutputModel& model) {
    OutputWindow& w = output();
    if (!model.loaded() && !w.loaded()) return;
    w.update(model);
    if (model.visible() && !w.visible()) w.present();
    process_events();
}

bool Win32Host::output_dismissed() {
    return output_ && output_->take_ok();
}

void Win32Host::output_place(int left, int top, int width, int height) {
    if (output_) output_->place({left, top, width, height});
    process_events();
}

std::string Win32Host::ask(const Question& q) {
    std::string answer = ask_question(c_, q);
    check_end();
    return answer;
}

ErrorChoice Win32Host::show_error(Severity severity, std::string_view title,
                                  std::string_view text) {
    const ErrorChoice choice = show_error_window(c_, severity, title, text);
    check_end();
    return choice;
}

std::string Win32Host::choose_script(std::string_view title, std::string_view text,
                                     std::string_view last_script) {
    return choose_script_window(c_, title, text, last_script);
}

MessageBoxResult Win32Host::message_box(std::string_view text, std::string_view title,
                                        MessageBoxButtons buttons) {
    const UINT type = (buttons == MessageBoxButtons::OkCancel ? MB_OKCANCEL : MB_OK) |
                      MB_ICONINFORMATION | MB_TASKMODAL | MB_SETFOREGROUND;
    const int r = MessageBoxW(nullptr, widen(text).c_str(), widen(title).c_str(), type);
    check_end();
    return r == IDCANCEL ? MessageBoxResult::Cancel : MessageBoxResult::Ok;
}

DebugAction Win32Host::debug_stop(const DebugView& view) {
    if (!debug_) debug_ = std::make_unique<DebugWindow>(c_);
    return debug_->stop(view);
}

void Win32Host::debug_hide() {
    if (debug_ && debug_->visible()) debug_->hide();
}

void Win32Host::progress_show(std::string_view title, std::string_view) {
    if (!progress_) progress_ = std::make_unique<ProgressWindowView>(c_, ProgressWindow::Progress);
    progress_->start(title);
    process_events();
}

void Win32Host::progress_update(const ProgressModel& model) {
    auto& view = model.window == ProgressWindow::Popup ? popup_ : progress_;
    if (!view) view = std::make_unique<ProgressWindowView>(c_, model.window);
    view->update(model);
    process_events();
}

void Win32Host::progress_close() {
    if (progress_) progress_->close();
    process_events();
}

void Win32Host::popup_show(const ProgressModel& model) {
    if (!popup_) popup_ = std::make_unique<ProgressWindowView>(c_, ProgressWindow::Popup);
    popup_->update(model);
    process_events();
}

void Win32Host::popup_close() {
    if (popup_) popup_->close();
}

bool Win32Host::progress_cancelled() {
    return progress_ && progress_->cancelled();
}

}  // namespace quiller::win32
