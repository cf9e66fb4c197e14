// The desktop's own programs: the text editor for a script (the debugger's Edit button).
#pragma once

#include <string>

namespace quiller::qt {

// Opens the file in the desktop's default application for plain text (not in the application
// registered for its own type, which for a .prg is Quiller itself).
void edit_in_text_editor(const std::string& path);

}  // namespace quiller::qt
