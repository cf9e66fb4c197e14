#include "bindings/file_operation_report.hpp"

#include "engine/engine.hpp"

namespace quiller::fileops {

void Problems::add(std::string message, int error) {
    if (count_++ > 0) return;
    first_ = std::move(message);
    error_ = error;
}

void Problems::report(Engine& e) const {
    if (count_ == 0) return;
    std::string message = "(" + tag_ + ") " + first_;
    if (count_ > 1) message += " (and " + std::to_string(count_ - 1) + " more)";
    const std::string platform_text = error_ ? e.platform().files->error_text(error_) : "";
    e.report_error(message, Severity::Warning, platform_text);
}

}  // namespace quiller::fileops
