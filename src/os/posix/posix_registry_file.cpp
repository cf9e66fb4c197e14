// Where the POSIX registry store lives, and making its directory and file.
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "os/posix/posix_registry.hpp"

namespace quiller::posix {
namespace {

std::string environment(const char* name) {
    const char* v = std::getenv(name);
    return v ? std::string(v) : std::string();
}

std::string home_directory() {
    std::string home = environment("HOME");
    if (!home.empty()) return home;
    const passwd* pw = ::getpwuid(::getuid());
    return pw && pw->pw_dir ? std::string(pw->pw_dir) : std::string(".");
}

// Makes every missing directory of `dir`, private to the user.
void make_directories(const std::string& dir) {
    for (std::size_t slash = dir.find('/', 1);; slash = dir.find('/', slash + 1)) {
        const std::string part = dir.substr(0, slash);
        if (!part.empty()) ::mkdir(part.c_str(), 0700);
        if (slash == std::string::npos) return;
    }
}

}  // namespace

std::string registry_file_path() {
    std::string path = environment("QUILLER_REGISTRY");
    if (!path.empty()) return path;
    const std::string data_home = environment("XDG_DATA_HOME");
    if (data_home.starts_with('/')) return data_home + "/quiller/registry.db";
    return home_directory() + "/.local/share/quiller/registry.db";
}

void prepare_registry_file(const std::string& path) {
    if (path.empty() || path == ":memory:" || path.starts_with("file:")) return;
    const std::size_t slash = path.rfind('/');
    if (slash != std::string::npos && slash > 0) make_directories(path.substr(0, slash));
    const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd >= 0) ::close(fd);
}

}  // namespace quiller::posix
