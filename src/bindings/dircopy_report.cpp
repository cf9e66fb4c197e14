#include "bindings/dircopy_report.hpp"

#include "engine/engine.hpp"
#include "value/format.hpp"

namespace quiller::statements {
namespace {

// Failed actions shown one by one; the others go to the log and one closing warning.
constexpr int kWarningsShown = 20;
constexpr double kStatusInterval = 1.0;  // seconds between two progress files

std::string count(std::int64_t n) {
    return value::format_number(static_cast<double>(n), "#,##0");
}

}  // namespace

void activity_line(Engine& e, std::string_view line) {
    OutputModel& out = e.output();
    out.show({}, line, false, false);
    out.set_visible(true);
    e.host().output_printed(out, line);
}

DircopyReport::DircopyReport(Engine& e, std::string log_path, std::string progress_path, bool meter,
                             bool quiet)
    : e_(e),
      log_path_(std::move(log_path)),
      progress_path_(std::move(progress_path)),
      meter_(meter),
      quiet_(quiet) {
    started_ = stamp();
}

DircopyReport::~DircopyReport() {
    if (shown_) e_.host().popup_close();
    flush_log();
}

void DircopyReport::set_roots(std::string source, std::string target) {
    source_ = std::move(source);
    target_ = std::move(target);
}

std::string DircopyReport::stamp() const {
    return value::format_date(e_.platform().clock->now(), "yyyy-mm-dd hh:nn:ss");
}

void DircopyReport::log(std::string_view text, std::string_view reason) {
    if (log_path_.empty()) return;
    log_buffer_ += stamp();
    log_buffer_ += ' ';
    log_buffer_ += text;
    if (!reason.empty()) {
        log_buffer_ += ": ";
        log_buffer_ += reason;
    }
    log_buffer_ += kLineBreak;
}

void DircopyReport::line(std::string_view text) {
    if (!quiet_) activity_line(e_, text);
    log(text);
}

void DircopyReport::warn(std::string_view message, const Status& error) {
    warn(message, error.ok() ? std::string() : error.error().shown());
}

void DircopyReport::warn(std::string_view message, const std::string& reason) {
    log(message, reason);
    flush_log();
    e_.report_error(message, Severity::Warning, reason);
}

void DircopyReport::flush_log() {
    if (log_path_.empty() || log_buffer_.empty()) return;
    if (!e_.platform().files->append_file(log_path_, log_buffer_).ok()) {
        const std::string path = std::move(log_path_);
        log_path_.clear();  // one warning, not one per line
        e_.report_error("(dircopy) Couldn't write the log '" + path + "'.", Severity::Warning);
    }
    log_buffer_.clear();
}

void DircopyReport::start(std::int64_t total) {
    model_.window = ProgressWindow::Popup;
    model_.title = "Copying " + source_ + " to " + target_;
    model_.unit = "files";
    model_.cancel_visible = true;
    model_.total = total;
    model_.done = 0;
    model_.start_timer(e_.platform().clock->monotonic_seconds());
    if (meter_) {
        shown_ = true;
        e_.host().popup_show(model_);
    }
    status("running");
}

void DircopyReport::action_ended(const sync::Action& action, std::string_view path,
                                 const Status& outcome) {
    const std::string kind(sync::kind_name(action.kind));
    current_ = path;
    if (outcome) return log(kind + " " + std::string(path));
    ++failed_;
    const std::string message = "(dircopy) " + kind + " '" + std::string(path) + "' failed";
    if (++warnings_shown_ <= kWarningsShown) return warn(message, outcome);
    log(message, outcome.error().shown());
}

void DircopyReport::between_actions(std::int64_t done, std::string_view path) {
    model_.done = done;
    model_.now = e_.platform().clock->monotonic_seconds();
    current_ = path;
    if (shown_) {
        model_.progress_text = current_;
        e_.host().progress_update(model_);
    }
    e_.host().process_events();
    if (model_.now - last_status_ >= kStatusInterval) {
        flush_log();
        status("running");
    }
    if (shown_ && e_.host().progress_cancelled()) {
        line("Cancelled after " + count(done) + " of " + count(model_.total) + " actions.");
        status("cancelled");
        e_.end_run(0);
    }
}

void DircopyReport::finish(const sync::ExecutionCounts& counts, std::string_view state) {
    std::string summary = "Done:";
    for (int k = 1; k < sync::kActionKinds; ++k) {
        summary += ' ';
        summary += sync::kind_name(static_cast<sync::ActionKind>(k));
        summary += ' ';
        summary += count(counts.done[k]);
        summary += k + 1 < sync::kActionKinds ? "," : ";";
    }
    summary += " failed " + count(counts.failed);
    if (counts.skipped) summary += ", deletions left out " + count(counts.skipped);
    const double seconds = e_.platform().clock->monotonic_seconds() - model_.start;
    summary += "; " + count(counts.bytes) + " bytes copied in " +
               value::format_number(seconds, "0.0") + " s.";
    bytes_ = counts.bytes;
    line(summary);
    const int hidden = warnings_shown_ - kWarningsShown;
    if (hidden > 0)
        warn("(dircopy) " + count(hidden) + " more actions failed" +
             (log_path_.empty() ? std::string(".") : "; see the log '" + log_path_ + "'."));
    flush_log();
    status(state);
}

void DircopyReport::status(std::string_view state) {
    last_status_ = e_.platform().clock->monotonic_seconds();
    if (progress_path_.empty()) return;
    const std::string nl(kLineBreak);
    std::string text =
        "state=" + std::string(state) + nl + "source=" + source_ + nl + "target=" + target_ + nl +
        "actions=" + std::to_string(model_.total) + nl + "done=" + std::to_string(model_.done) +
        nl + "failed=" + std::to_string(failed_) + nl +
        "bytes=" + std::to_string(counts_ ? counts_->bytes : bytes_) + nl + "current=" + current_ +
        nl + "started=" + started_ + nl + "updated=" + stamp() + nl;
    e_.platform().files->replace_file(progress_path_, text);  // the next status tries again
}

}  // namespace quiller::statements
