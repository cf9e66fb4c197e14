// What a Win32 console program needs to keep its texts UTF-8.
#pragma once

#include <string>
#include <vector>

namespace quiller::win32 {

// The program's arguments (without the program name) from the wide command line, as UTF-8.
std::vector<std::string> utf8_arguments();

// Lets a console show the UTF-8 bytes the program writes, and read typed text as UTF-8.
void use_utf8_console();

}  // namespace quiller::win32
