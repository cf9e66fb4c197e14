// UTF-8 arguments and console code pages on Win32.
#include "os/win32/win32_console.hpp"

#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"

#include <shellapi.h>  // after windows.h

namespace quiller::win32 {

std::vector<std::string> utf8_arguments() {
    int argc = 0;
    wchar_t** argv = CommandLineToArgvW(GetCommandLineW(), &argc);
    std::vector<std::string> args;
    if (!argv) return args;
    for (int i = 1; i < argc; ++i) args.push_back(narrow(argv[i]));
    LocalFree(argv);
    return args;
}

void use_utf8_console() {
    SetConsoleOutputCP(CP_UTF8);
    SetConsoleCP(CP_UTF8);
}

}  // namespace quiller::win32
