// Run-time failures inside a statement. A statement throws `ScriptFailure`; the interpreter loop
// catches it and reports it as a warning whose platform line carries the failure's text and number.
#pragma once

#include <string>

namespace quiller {

struct ScriptFailure {
    std::string description;  // "Division by zero"
    int number = 0;           // 11; 0 when `description` is the system's own "text (code)"
    std::string message;      // optional own message; the loop supplies one when empty

    std::string platform_text() const {
        return number == 0 ? description : description + " (" + std::to_string(number) + ")";
    }
};

// The fixed failures of the language's own operations.
namespace failures {
// A failure of the operating system, with its own "text (code)".
inline ScriptFailure system(std::string text) {
    return {std::move(text), 0, {}};
}
inline ScriptFailure out_of_memory() {
    return {"Out of memory", 7, {}};
}
inline ScriptFailure out_of_string_space() {
    return {"Out of string space", 14, {}};
}
inline ScriptFailure overflow() {
    return {"Overflow", 6, {}};
}
inline ScriptFailure division_by_zero() {
    return {"Division by zero", 11, {}};
}
inline ScriptFailure type_mismatch() {
    return {"Type mismatch", 13, {}};
}
inline ScriptFailure out_of_stack() {
    return {"Out of stack space", 28, {}};
}
inline ScriptFailure bad_file_number() {
    return {"Bad file name or number", 52, {}};
}
inline ScriptFailure file_not_found() {
    return {"File not found", 53, {}};
}
inline ScriptFailure bad_file_mode() {
    return {"Bad file mode", 54, {}};
}
inline ScriptFailure path_access_error() {
    return {"Path/File access error", 75, {}};
}
}  // namespace failures

// Ends the run at once with an exit status (`end`, a fatal error, the user's choice).
struct RunEnded {
    int exit_status = 0;
};

}  // namespace quiller
