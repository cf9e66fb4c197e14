// The Qt desktop host: every window of the host interface as a Qt Widgets window on the one GUI
// thread. Each window is a thin view of its model in src/ui; waits keep the windows alive.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "hosts/qt/placement.hpp"
#include "ui/debug_model.hpp"
#include "ui/host.hpp"

class QWidget;

namespace quiller::qt {

class DisplayForm;
class DebugForm;
class ProgressForm;

// What the windows ask of the desktop; tests put recorders in.
struct DesktopServices {
    std::function<std::string()> temp_text_file;  // a fresh "....txt" name of the user's own
    std::function<void(const std::string&)> open_document;  // the desktop's opener
    std::function<void(const std::string&)> edit_file;      // the desktop's text editor
    std::string reference_file;                             // readme-quiller.htm beside the program
    bool native_dialogs = true;                             // false: Qt's own file dialog
};

class QtHost final : public Host {
  public:
    QtHost(SettingsStore& settings, std::string version, DesktopServices desktop);
    ~QtHost() override;

    void output_printed(const OutputModel& model, std::string_view text) override;
    void output_pause(const OutputModel& model, std::string_view message) override;
    void output_finished(const OutputModel& model) override;
    void output_notice(const OutputModel& model, std::string_view message) override;
    void output_refresh(const OutputModel& model) override;
    bool output_visible(const OutputModel& model) override;
    bool output_dismissed() override;
    void output_place(int left, int top, int width, int height) override;
    std::string ask(const Question& q) override;
    ErrorChoice show_error(Severity severity, std::string_view title,
                           std::string_view text) override;
    std::string choose_script(std::string_view title, std::string_view text,
                              std::string_view last_script) override;
    MessageBoxResult message_box(std::string_view text, std::string_view title,
                                 MessageBoxButtons buttons) override;
    DebugAction debug_stop(const DebugView& view) override;
    void debug_hide() override;
    void process_events() override;
    void progress_show(std::string_view title, std::string_view unit) override;
    void progress_update(const ProgressModel& model) override;
    void progress_close() override;
    bool progress_cancelled() override;
    void popup_show(const ProgressModel& model) override;
    void popup_close() override;

    // Closes every window, saving placements (the end of the run).
    void close_all();

    // For tests: the windows as they are now (null when not open).
    DisplayForm* display_form() { return display_.get(); }
    DebugForm* debug_form() { return debug_.get(); }
    ProgressForm* progress_form(ProgressWindow kind);

  private:
    DisplayForm& display(const OutputModel& model);
    // Shows the output window afresh, modally, until OK (or the close box) hides it.
    void show_output_modally(const OutputModel& model);
    ProgressForm& progress(ProgressWindow kind);
    void close_progress(ProgressWindow kind);
    // Runs events until `done` or the user ended the program; then ends it if so.
    void wait_until(const std::function<bool()>& done);
    void end_if_requested();
    // Events at most every 30 ms for printing loops; always for `force`.
    void pump(bool force = false);
    void show_about(QWidget* parent);
    void save_output_to_temp_and_open();

    SettingsStore& settings_;
    std::string version_;
    DesktopServices desktop_;
    std::unique_ptr<DisplayForm> display_;
    WindowPlacement display_place_;
    const OutputModel* output_ = nullptr;  // the engine's, for the Open button
    bool finishing_ = false;
    bool dismissed_ = false;
    DebugModel debug_model_;
    std::unique_ptr<DebugForm> debug_;
    WindowPlacement debug_place_;
    std::unique_ptr<ProgressForm> popup_;
    std::unique_ptr<ProgressForm> progress_;
    WindowPlacement popup_place_;
    WindowPlacement progress_place_;
    ProgressModel progress_model_;
    std::optional<int> end_requested_;  // the exit status once the user ended the program
    long long last_pump_ms_ = 0;
};

}  // namespace quiller::qt
