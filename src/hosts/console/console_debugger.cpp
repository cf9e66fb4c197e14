#include "hosts/console/console_debugger.hpp"

#include <algorithm>
#include <string>

#ifdef _WIN32
#include <conio.h>
#else
#include <termios.h>
#include <unistd.h>
#endif

namespace quiller {
namespace {

constexpr int kContext = 4;  // lines shown before and after the current one

// One key without waiting for Enter and without echo; EOF at the end of the input.
int read_key(std::FILE* in) {
#ifdef _WIN32
    (void)in;
    return _getch();
#else
    const int fd = ::fileno(in);
    termios saved{};
    const bool raw = ::tcgetattr(fd, &saved) == 0;
    if (raw) {
        termios t = saved;
        t.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        t.c_cc[VMIN] = 1;
        t.c_cc[VTIME] = 0;
        ::tcsetattr(fd, TCSANOW, &t);
    }
    unsigned char c = 0;
    const ssize_t n = ::read(fd, &c, 1);
    if (raw) ::tcsetattr(fd, TCSANOW, &saved);
    return n == 1 ? c : EOF;
#endif
}

void put(std::FILE* err, const std::string& line) {
    std::fwrite(line.data(), 1, line.size(), err);
    std::fputc('\n', err);
}

}  // namespace

DebugAction console_debug_stop(const DebugView& view, std::FILE* in, std::FILE* err) {
    put(err, "--- " + view.caption + " ---");
    if (view.listing) {
        const int rows = static_cast<int>(view.listing->size());
        const int current = view.current_line - 1;
        for (int r = std::max(0, current - kContext); r <= std::min(rows - 1, current + kContext);
             ++r) {
            std::string line(r == current ? ">" : " ");
            line += ' ';
            line += (*view.listing)[static_cast<std::size_t>(r)];
            put(err, line);
        }
    }
    put(err, "  as run: " + view.line_text);
    if (!view.variables.empty()) put(err, "Variables:");
    for (const std::string& v : view.variables) put(err, "  " + v);
    for (;;) {
        std::fputs("[S]tep  [C]ontinue  [T]erminate? ", err);
        std::fflush(err);
        const int key = read_key(in);
        std::fputc('\n', err);
        switch (key) {
            case 's':
            case 'S':
            case ' ':
            case '\n':
            case '\r':
                return DebugAction::Step;
            case 'c':
            case 'C':
            case EOF:
                return DebugAction::Continue;
            case 't':
            case 'T':
            case 'q':
            case 'Q':
                return DebugAction::Terminate;
            default:
                break;
        }
    }
}

}  // namespace quiller
