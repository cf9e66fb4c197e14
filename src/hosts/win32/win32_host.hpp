// The Win32 desktop host: the program's windows as native Windows dialogs (`DisplayForm`,
// `AskForm`, `frmPopup`, `frmProgress`, `DebugForm`, the error window, the about box and message
// boxes), each a thin view of its toolkit-free model, all on the program's one thread.
#pragma once

#include <memory>

#include "hosts/win32/host_context.hpp"
#include "os/platform.hpp"
#include "ui/host.hpp"

namespace quiller::win32 {

class OutputWindow;
class DebugWindow;
class ProgressWindowView;

class Win32Host final : public Host {
  public:
    // `settings` keeps the window placements; `processes` starts Notepad and opens documents.
    Win32Host(SettingsStore& settings, Processes& processes, FileSystem& files);
    ~Win32Host() override;

    void output_printed(const OutputModel& model, std::string_view text) override;
    void output_pause(const OutputModel& model, std::string_view message) override;
    void output_finished(const OutputModel& model) override;
    void output_notice(const OutputModel& model, std::string_view message) override;
    void output_refresh(const OutputModel& model) override;
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
    void popup_show(const ProgressModel& model) override;
    void popup_close() override;
    bool progress_cancelled() override;

  private:
    // Ends the program (throws EndProgram) when a window asked for it.
    void check_end();
    OutputWindow& output();
    HostContext c_;
    std::unique_ptr<OutputWindow> output_;
    std::unique_ptr<DebugWindow> debug_;
    std::unique_ptr<ProgressWindowView> popup_;
    std::unique_ptr<ProgressWindowView> progress_;
};

// The folder of the running program, without the trailing "\".
std::string program_folder();

}  // namespace quiller::win32
