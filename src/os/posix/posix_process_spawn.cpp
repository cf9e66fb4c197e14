// Starting programs and finding them in PATH.
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "os/posix/posix_processes.hpp"

extern char** environ;

namespace quiller::posix {
namespace {

// Words /bin/sh runs itself: reserved words and builtins.
constexpr std::string_view kShellWords[] = {
    "!",    "{",        "}",       ".",        ":",       "[",     "alias", "bg",     "break",
    "case", "cd",       "command", "continue", "do",      "done",  "echo",  "elif",   "else",
    "esac", "eval",     "exec",    "exit",     "export",  "false", "fc",    "fg",     "fi",
    "for",  "getopts",  "hash",    "if",       "jobs",    "kill",  "local", "printf", "pwd",
    "read", "readonly", "return",  "set",      "shift",   "test",  "then",  "times",  "trap",
    "true", "type",     "ulimit",  "umask",    "unalias", "unset", "until", "wait",   "while"};

bool is_executable_file(const std::string& path) {
    struct stat st {};
    return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode) && access(path.c_str(), X_OK) == 0;
}

// The text of a quoted piece starting at `i` (on the quote); `i` ends after the closing quote.
// False when the quote is not closed or the piece holds something the shell expands.
bool take_quoted(std::string_view s, std::size_t& i, std::string& word) {
    const char quote = s[i++];
    bool plain = true;
    while (i < s.size() && s[i] != quote) {
        if (quote == '"' && (s[i] == '$' || s[i] == '`')) plain = false;
        if (quote == '"' && s[i] == '\\' && i + 1 < s.size()) ++i;
        word += s[i++];
    }
    if (i >= s.size()) return false;
    ++i;
    return plain;
}

// The first word of a command line without its quotes; `plain` is false when the shell would
// expand it first (variables, patterns, an assignment) so that its program can't be known here.
std::string first_word(std::string_view s, bool& plain) {
    std::size_t i = s.find_first_not_of(" \t\n");
    std::string word;
    plain = true;
    while (i < s.size() && std::string_view(" \t\n;&|<>()").find(s[i]) == std::string_view::npos) {
        if (s[i] == '\'' || s[i] == '"') {
            if (!take_quoted(s, i, word)) plain = false;
            continue;
        }
        if (s[i] == '\\' && i + 1 < s.size())
            ++i;
        else if (std::string_view("$`*?[~=").find(s[i]) != std::string_view::npos)
            plain = false;
        word += s[i++];
    }
    return word;
}

}  // namespace

int spawn_program(const std::vector<std::string>& argv, pid_t& pid) {
    std::vector<char*> args;
    for (const std::string& a : argv) args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);

    // The program gets default signal handling and only the standard descriptors.
    posix_spawnattr_t attr;
    posix_spawnattr_init(&attr);
    sigset_t defaults, mask;
    sigemptyset(&mask);
    sigemptyset(&defaults);
    for (int s : {SIGPIPE, SIGINT, SIGQUIT, SIGHUP, SIGTERM, SIGCHLD}) sigaddset(&defaults, s);
    posix_spawnattr_setsigdefault(&attr, &defaults);
    posix_spawnattr_setsigmask(&attr, &mask);
    posix_spawnattr_setflags(&attr, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
#if defined(__GLIBC__) && (__GLIBC__ > 2 || __GLIBC_MINOR__ >= 34)
    posix_spawn_file_actions_addclosefrom_np(&actions, 3);
#endif
    const bool search = argv[0].find('/') == std::string::npos;
    const int error = search ? posix_spawnp(&pid, args[0], &actions, &attr, args.data(), environ)
                             : posix_spawn(&pid, args[0], &actions, &attr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attr);
    return error;
}

std::optional<std::string> find_program(const std::string& name) {
    if (name.empty()) return std::nullopt;
    if (name.find('/') != std::string::npos)
        return is_executable_file(name) ? std::optional(name) : std::nullopt;
    const char* path = std::getenv("PATH");
    std::string_view dirs = path ? path : "/usr/local/bin:/usr/bin:/bin";
    while (true) {
        const std::size_t colon = dirs.find(':');
        const std::string_view dir = dirs.substr(0, colon);
        const std::string candidate =
            (dir.empty() ? std::string(".") : std::string(dir)) + "/" + name;
        if (is_executable_file(candidate)) return candidate;
        if (colon == std::string_view::npos) return std::nullopt;
        dirs.remove_prefix(colon + 1);
    }
}

bool command_found(std::string_view command) {
    if (command.find_first_not_of(" \t\n") == std::string_view::npos) return false;
    bool plain = true;
    const std::string word = first_word(command, plain);
    if (!plain || word.empty()) return true;
    if (std::find(std::begin(kShellWords), std::end(kShellWords), word) != std::end(kShellWords))
        return true;
    return find_program(word).has_value();
}

}  // namespace quiller::posix
