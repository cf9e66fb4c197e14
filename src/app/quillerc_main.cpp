// quillerc: runs a .prg script with the console host.
#include <cstdio>

#include "app/command_line.hpp"
#include "app/console_host.hpp"
#include "engine/engine.hpp"

int main(int argc, char** argv) {
    quiller::ConsoleHost host(stdout, stderr, stdin);
    quiller::Platform platform = quiller::make_platform();
    quiller::Engine engine(host, platform);
    return engine.run(quiller::join_command_line(argc, argv));
}
