// The console host: printed output on stdout, windows' texts and prompts on stderr, answers
// from stdin. The progress windows (the pop-up included) are one line on stderr, redrawn in
// place, when that is a terminal; nothing otherwise.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>

#include "ui/host.hpp"

namespace quiller {

class ConsoleHost final : public Host {
  public:
    ConsoleHost(std::FILE* out, std::FILE* err, std::FILE* in);

    void output_printed(const OutputModel& model, std::string_view text) override;
    void output_pause(const OutputModel& model, std::string_view message) override;
    void output_finished(const OutputModel& model) override;
    void output_notice(const OutputModel& model, std::string_view message) override;
    std::string ask(const Question& q) override;
    ErrorChoice show_error(Severity severity, std::string_view title,
                           std::string_view text) override;
    std::string choose_script(std::string_view title, std::string_view text,
                              std::string_view last_script) override;
    MessageBoxResult message_box(std::string_view text, std::string_view title,
                                 MessageBoxButtons buttons) override;
    DebugAction debug_stop(const DebugView& view) override;
    void progress_show(std::string_view title, std::string_view unit) override;
    void progress_update(const ProgressModel& model) override;
    void progress_close() override;
    void popup_show(const ProgressModel& model) override;
    void popup_close() override;

  private:
    void write_err(std::string_view title, std::string_view text);
    void flush(std::FILE* f);
    bool read_line(std::string& line);

    std::FILE* out_;
    std::FILE* err_;
    std::FILE* in_;
    bool interactive_;

    bool progress_on_ = false;
    std::string progress_title_;
    std::size_t progress_width_ = 0;  // of the line on screen; 0 before the first
    std::chrono::steady_clock::time_point progress_drawn_;
};

}  // namespace quiller
