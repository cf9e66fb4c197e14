// What a running `dircopy` tells: its activity lines on the output window, the warnings of failed
// actions, the log with a time stamp per action, the progress window, and the progress file.
//
// The progress file is the live status of the run for other programs: "key=value" lines
// (state, source, target, actions, done, failed, bytes, current, started, updated), replaced
// in one step at most once a second, so a reader always finds a whole file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "sync/executor.hpp"
#include "ui/progress_model.hpp"

namespace quiller {
class Engine;
}

namespace quiller::statements {

// A line on the activity display, as `print` shows it.
void activity_line(Engine& e, std::string_view line);

class DircopyReport final : public sync::ExecutionObserver {
  public:
    DircopyReport(Engine& e, std::string log_path, std::string progress_path, bool meter,
                  bool quiet);
    ~DircopyReport() override;
    DircopyReport(const DircopyReport&) = delete;
    DircopyReport& operator=(const DircopyReport&) = delete;

    void set_roots(std::string source, std::string target);
    // The counts the progress file reports while the run goes on.
    void watch(const sync::ExecutionCounts& counts) { counts_ = &counts; }
    // A line for the display (unless quiet) and the log.
    void line(std::string_view text);
    // A warning through the error report, also logged.
    void warn(std::string_view message, const Status& error = {});
    void warn(std::string_view message, const std::string& system_text);

    // Execution begins: `total` actions.
    void start(std::int64_t total);
    void action_ended(const sync::Action& action, std::string_view path,
                      const Status& outcome) override;
    void between_actions(std::int64_t done, std::string_view path) override;
    // The summary line (display and log), the last progress file; `state` is "finished" or
    // "cancelled".
    void finish(const sync::ExecutionCounts& counts, std::string_view state);
    // Writes the progress file now with `state`.
    void status(std::string_view state);

  private:
    std::string stamp() const;
    // A line of the log with its time stamp (kept until the next flush).
    void log(std::string_view text, std::string_view reason = {});
    void flush_log();

    Engine& e_;
    std::string log_path_;
    std::string progress_path_;
    bool meter_;
    bool quiet_;
    bool shown_ = false;
    std::string source_, target_, current_, started_;
    std::string log_buffer_;
    ProgressModel model_;
    std::int64_t failed_ = 0;
    std::int64_t bytes_ = 0;
    const sync::ExecutionCounts* counts_ = nullptr;
    int warnings_shown_ = 0;
    double last_status_ = -1;
};

}  // namespace quiller::statements
