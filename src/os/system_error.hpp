// The one way the operating-system services report a failure: the system's own code and text,
// taken when the call failed and carried in the result. Callers never read errno or
// GetLastError afterwards.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace quiller {

// What a caller may need to tell apart without knowing the platform's codes.
enum class ErrorKind {
    Other,
    NotFound,   // the path, or a directory on it, does not exist
    Exists,     // the name is taken
    Cancelled,  // the caller's cancel check asked to stop
};

struct SystemError {
    int code = 0;      // errno on POSIX, the GetLastError code on Windows
    std::string text;  // the system's message for the code
    ErrorKind kind = ErrorKind::Other;

    // "text (code)", as messages show it.
    std::string shown() const { return text + " (" + std::to_string(code) + ")"; }
};

// Success, or the error that prevented it.
class Status {
  public:
    Status() = default;
    Status(SystemError error) : error_(std::move(error)), failed_(true) {}

    bool ok() const { return !failed_; }
    explicit operator bool() const { return ok(); }
    const SystemError& error() const { return error_; }

  private:
    SystemError error_;
    bool failed_ = false;
};

// A value, or the error that kept it from being made.
template <typename T>
class Result {
  public:
    Result(T value) : state_(std::move(value)) {}
    Result(SystemError error) : state_(std::move(error)) {}

    bool ok() const { return state_.index() == 0; }
    explicit operator bool() const { return ok(); }
    T& operator*() { return std::get<0>(state_); }
    const T& operator*() const { return std::get<0>(state_); }
    T* operator->() { return &std::get<0>(state_); }
    const T* operator->() const { return &std::get<0>(state_); }
    const SystemError& error() const { return std::get<1>(state_); }
    // The error alone, for passing a failure on.
    Status status() const { return ok() ? Status() : Status(error()); }

  private:
    std::variant<T, SystemError> state_;
};

}  // namespace quiller
