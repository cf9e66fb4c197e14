#include "hosts/console/console_host.hpp"

#include <cerrno>
#include <cstring>

#include "hosts/console/console_debugger.hpp"
#include "value/text.hpp"

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <termios.h>
#include <unistd.h>
#endif

namespace quiller {
namespace {

bool is_terminal(std::FILE* f) {
#ifdef _WIN32
    return ::_isatty(::_fileno(f)) != 0;
#else
    return ::isatty(::fileno(f)) != 0;
#endif
}

}  // namespace

ConsoleHost::ConsoleHost(std::FILE* out, std::FILE* err, std::FILE* in)
    : out_(out), err_(err), in_(in), interactive_(is_terminal(in)) {}

// Output that can't be written ends the run: the reason goes to stderr while it still works.
void ConsoleHost::flush(std::FILE* f) {
    errno = 0;
    if (std::fflush(f) == 0 && !std::ferror(f)) return;
    const int code = errno ? errno : EIO;
    const std::string channel = f == out_ ? "standard output" : "standard error";
    const std::string message =
        "quillerc: " + channel + " can't be written: " + std::strerror(code);
    if (f != err_) {
        std::fprintf(err_, "%s\n", message.c_str());
        std::fflush(err_);
    }
    throw EndProgram{1};
}

void ConsoleHost::write_err(std::string_view title, std::string_view text) {
    if (!title.empty()) std::fprintf(err_, "%.*s\n", static_cast<int>(title.size()), title.data());
    std::fwrite(text.data(), 1, text.size(), err_);
    std::fputc('\n', err_);
    flush(err_);
}

bool ConsoleHost::read_line(std::string& line) {
    line.clear();
    int c;
    bool any = false;
    while ((c = std::fgetc(in_)) != EOF) {
        any = true;
        if (c == '\n') break;
        line += static_cast<char>(c);
    }
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return any;
}

void ConsoleHost::output_printed(const OutputModel&, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), out_);
    std::fputc('\n', out_);
    flush(out_);
}

void ConsoleHost::output_pause(const OutputModel&, std::string_view message) {
    write_err({}, message);
    if (!interactive_) return;
    std::string ignored;
    read_line(ignored);
}

void ConsoleHost::output_finished(const OutputModel&) {}

void ConsoleHost::output_notice(const OutputModel&, std::string_view message) {
    write_err({}, message);
}

namespace {

// Turns the terminal's echo off while a password is typed.
#ifdef _WIN32
class EchoOff {
  public:
    explicit EchoOff(std::FILE* f)
        : console_(reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(f)))) {
        if (!GetConsoleMode(console_, &saved_)) return;
        active_ = SetConsoleMode(console_, saved_ & ~static_cast<DWORD>(ENABLE_ECHO_INPUT)) != 0;
    }
    ~EchoOff() {
        if (active_) SetConsoleMode(console_, saved_);
    }

  private:
    HANDLE console_;
    DWORD saved_ = 0;
    bool active_ = false;
};
#else
class EchoOff {
  public:
    explicit EchoOff(std::FILE* f) : fd_(::fileno(f)) {
        if (::tcgetattr(fd_, &saved_) != 0) return;
        termios quiet = saved_;
        quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        active_ = ::tcsetattr(fd_, TCSANOW, &quiet) == 0;
    }
    ~EchoOff() {
        if (active_) ::tcsetattr(fd_, TCSANOW, &saved_);
    }

  private:
    int fd_;
    termios saved_{};
    bool active_ = false;
};
#endif

}  // namespace

// A text question takes the typed line (an empty line or the end of input: the default). A
// yes/no question takes y, yes, n or no; an empty line or the end of input takes the default
// button's answer ("Yes" only when the default is "yes").
std::string ConsoleHost::ask(const Question& q) {
    const bool yesno = q.kind == "yesno";
    const bool default_yes = text::ascii_lower(q.default_answer) == "yes";
    std::string prompt = q.question;
    if (yesno) prompt += default_yes ? " [Y/n]" : " [y/N]";
    write_err(q.caption, prompt);
    const std::string fallback = yesno ? (default_yes ? "Yes" : "No") : q.default_answer;
    std::string answer;
    for (;;) {
        bool got;
        if (!q.password_char.empty() && interactive_) {
            EchoOff echo_off(in_);
            got = read_line(answer);
            std::fputc('\n', err_);
        } else {
            got = read_line(answer);
        }
        if (!got || answer.empty()) return fallback;
        if (!yesno) return answer;
        const std::string a = text::ascii_lower(answer);
        if (a == "y" || a == "yes") return "Yes";
        if (a == "n" || a == "no") return "No";
        write_err({}, "Please answer yes or no.");
    }
}

ErrorChoice ConsoleHost::show_error(Severity, std::string_view title, std::string_view text) {
    write_err(title, text);
    return ErrorChoice::Continue;
}

std::string ConsoleHost::choose_script(std::string_view title, std::string_view text,
                                       std::string_view last_script) {
    write_err(title, text);
    if (!interactive_) return {};
    if (!last_script.empty())
        std::fprintf(err_, "[%.*s] ", static_cast<int>(last_script.size()), last_script.data());
    std::fprintf(err_, "File: ");
    flush(err_);
    std::string name;
    read_line(name);
    return name.empty() ? std::string(last_script) : name;
}

MessageBoxResult ConsoleHost::message_box(std::string_view text, std::string_view title,
                                          MessageBoxButtons) {
    write_err(title, text);
    return MessageBoxResult::Ok;
}

// On a terminal the debugger asks for a key; otherwise lines run on as if Step were pressed.
DebugAction ConsoleHost::debug_stop(const DebugView& view) {
    if (!interactive_) return DebugAction::Step;
    return console_debug_stop(view, in_, err_);
}

// Progress: at most four redraws a second; the last item always shows. The line is cut to fit
// an 80-column terminal and wiped when the window closes.
namespace {

constexpr std::size_t kProgressWidth = 79;
constexpr auto kProgressInterval = std::chrono::milliseconds(250);

// A pop-up without its bar shows its texts; with it, the percent and the time line.
std::string progress_line(const std::string& title, const ProgressModel& m) {
    std::string line = title;
    if (m.window == ProgressWindow::Popup && !m.bar_visible) {
        for (const std::string& part : {m.info, m.progress_text})
            if (!part.empty()) line += "  " + part;
    } else {
        line += ": " + std::to_string(m.percent()) + "%  " + m.count_text();
        for (const std::string& part : {m.rate_text(), m.time_text()})
            if (!part.empty()) line += " " + part;
    }
    line.resize(text::byte_offset_of_char(line, kProgressWidth));  // whole characters
    return line;
}

}  // namespace

void ConsoleHost::progress_show(std::string_view title, std::string_view) {
    progress_on_ = is_terminal(err_);
    progress_title_ = title;
    progress_width_ = 0;
}

void ConsoleHost::popup_show(const ProgressModel& model) {
    progress_on_ = is_terminal(err_);
    progress_title_ = model.title;
    progress_width_ = 0;
    progress_update(model);
}

void ConsoleHost::popup_close() {
    progress_close();
}

void ConsoleHost::progress_update(const ProgressModel& model) {
    if (!progress_on_) return;
    const auto now = std::chrono::steady_clock::now();
    const bool last =
        model.done >= model.total || (model.window == ProgressWindow::Popup && !model.bar_visible);
    if (progress_width_ > 0 && !last && now - progress_drawn_ < kProgressInterval) return;
    progress_drawn_ = now;
    const std::string line = progress_line(progress_title_, model);
    std::string out = "\r" + line;
    const std::size_t width = text::char_count(line);
    if (width < progress_width_) out.append(progress_width_ - width, ' ');
    progress_width_ = width;
    std::fwrite(out.data(), 1, out.size(), err_);
    flush(err_);
}

void ConsoleHost::progress_close() {
    if (progress_on_ && progress_width_ > 0) {
        std::string wipe(progress_width_ + 2, ' ');
        wipe.front() = wipe.back() = '\r';
        std::fwrite(wipe.data(), 1, wipe.size(), err_);
        flush(err_);
    }
    progress_on_ = false;
    progress_width_ = 0;
}

}  // namespace quiller
