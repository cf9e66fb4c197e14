#include "bindings/file_operation_report.hpp"

#include "engine/engine.hpp"

namespace quiller::fileops {

void Problems::add(std::string message, const Status& error) {
    if (count_++ > 0) return;
    first_ = std::move(message);
    platform_text_ = error.ok() ? std::string() : error.error().shown();
}

void Problems::report(Engine& e) const {
    if (count_ == 0) return;
    std::string message = "(" + tag_ + ") " + first_;
    if (count_ > 1) message += " (and " + std::to_string(count_ - 1) + " more)";
    e.report_error(message, Severity::Warning, platform_text_);
}

}  // namespace quiller::fileops
