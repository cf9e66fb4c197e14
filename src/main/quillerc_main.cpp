// quillerc: runs a .prg script with the console host.
#include <cstdio>
#include <string>
#include <vector>

#include "bindings/language.hpp"
#include "engine/engine.hpp"
#include "hosts/console/console_host.hpp"
#include "main/command_line.hpp"

#ifdef _WIN32
#include "os/win32/win32_console.hpp"
#endif

namespace {

// The arguments joined into one command-line text; on Windows read as UTF-8 from the wide
// command line, whatever the code page.
std::string command_line([[maybe_unused]] int argc, [[maybe_unused]] char** argv) {
#ifdef _WIN32
    quiller::win32::use_utf8_console();
    const std::vector<std::string> args = quiller::win32::utf8_arguments();
    std::vector<const char*> pointers{"quillerc"};
    for (const std::string& a : args) pointers.push_back(a.c_str());
    return quiller::join_command_line(static_cast<int>(pointers.size()), pointers.data());
#else
    return quiller::join_command_line(argc, argv);
#endif
}

}  // namespace

int main(int argc, char** argv) {
    quiller::ConsoleHost host(stdout, stderr, stdin);
    quiller::Platform platform = quiller::make_platform();
    // Numbers and dates follow the user's regional settings.
    quiller::value::set_conventions(platform.environment->regional_settings().view());
    quiller::Engine engine(host, platform, quiller::standard_language());
    const int status = engine.run(command_line(argc, argv));
    if (status == 0 && (std::fflush(stdout) != 0 || std::ferror(stdout))) return 1;
    return status;
}
