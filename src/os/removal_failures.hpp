// What removing a tree remembers as it goes on after a failure: the first path that stayed and
// why. The paths it names below the root are written with the root's own separator.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "os/file_operation_paths.hpp"
#include "os/system_error.hpp"

namespace quiller {

class RemovalFailures {
  public:
    explicit RemovalFailures(std::string_view root) : separator_(fileops::separator_of(root)) {}

    bool ok() const { return !first_; }
    // Only the first failure is kept.
    void fail(const std::string& shown, SystemError error) {
        if (first_) return;
        failed_ = shown;
        first_ = std::move(error);
    }
    // How messages name `name` inside the directory they call `shown`.
    std::string child(const std::string& shown, std::string_view name) const {
        return shown + separator_ + std::string(name);
    }
    // Success, or the first error with the path that stayed in `failed`.
    Status outcome(std::string& failed) const {
        if (!first_) return {};
        failed = failed_;
        return *first_;
    }

  private:
    char separator_;
    std::string failed_;
    std::optional<SystemError> first_;
};

}  // namespace quiller
