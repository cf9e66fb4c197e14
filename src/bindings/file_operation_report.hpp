// The problems of one file statement, gathered while it works and reported once at its end: a
// statement reports at most one warning, so the error window shows once and on_error runs once.
#pragma once

#include <string>
#include <string_view>

#include "os/system_error.hpp"

namespace quiller {
class Engine;
}

namespace quiller::fileops {

class Problems {
  public:
    explicit Problems(std::string_view tag) : tag_(tag) {}

    // A problem, with the error behind it (none when the message says everything).
    void add(std::string message, const Status& error = {});
    bool empty() const { return count_ == 0; }

    // One warning: "(tag) " + the first problem, + " (and N more)" when there were others, with
    // the platform's text for the first problem's error.
    void report(Engine& e) const;

  private:
    std::string tag_;
    std::string first_;
    std::string platform_text_;  // the first problem's
    int count_ = 0;
};

// A path as messages quote it.
inline std::string quoted(std::string_view path) {
    std::string text;
    text.reserve(path.size() + 2);
    text += '\'';
    text += path;
    text += '\'';
    return text;
}

}  // namespace quiller::fileops
