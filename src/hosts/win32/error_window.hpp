// The error window: the warning or fatal error with OK, End and Debug; and, at start-up without
// a script, its file-choosing mode with a file-name field and Browse (the platform's file
// dialog). The buttons and their meaning come from the error window model.
#pragma once

#include <string>
#include <string_view>

#include "hosts/win32/host_context.hpp"
#include "ui/host.hpp"

namespace quiller::win32 {

ErrorChoice show_error_window(HostContext& c, Severity severity, std::string_view title,
                              std::string_view text);
// The file-choosing mode: the chosen script, or empty when the user ended the window.
std::string choose_script_window(HostContext& c, std::string_view title, std::string_view text,
                                 std::string_view last_script);

// The platform's file-open dialog over `owner` with the filter of a model ("Name (*.prg);;All
// files (*)"); the chosen file, or empty.
std::string browse_for_file(HWND owner, std::string_view title, std::string_view filter,
                            std::string_view start);

}  // namespace quiller::win32
