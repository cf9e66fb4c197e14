// Environment, temporary directory and clock on POSIX.
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <thread>

#include "os/posix/posix_platform.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller::posix {
namespace {

std::string env_or_empty(const char* name) {
    const char* v = std::getenv(name);
    return v ? std::string(v) : std::string();
}

std::string host_name() {
    char buffer[256] = {};
    if (::gethostname(buffer, sizeof buffer - 1) != 0) return {};
    std::string name(buffer);
    return name.substr(0, name.find('.'));
}

std::string user_name() {
    for (const char* n : {"USER", "LOGNAME"}) {
        std::string v = env_or_empty(n);
        if (!v.empty()) return v;
    }
    const passwd* pw = ::getpwuid(::getuid());
    return pw && pw->pw_name ? std::string(pw->pw_name) : std::string();
}

}  // namespace

// The Windows names scripts and the error log rely on fall back to their POSIX equivalents:
// USERNAME to the login name, COMPUTERNAME and USERDOMAIN to the host name in upper case (as
// Windows writes computer names).
std::string PosixEnvironment::get(const std::string& name) {
    std::string v = env_or_empty(name.c_str());
    if (!v.empty()) return v;
    const std::string upper = text::ascii_lower(name);
    if (upper == "username") return user_name();
    if (upper == "computername" || upper == "userdomain") return text::to_upper(host_name());
    return v;
}

namespace {

// A folder only this user can change: a real folder (not a link) of the user's own that no one
// else may write to.
bool is_private_folder(const std::string& dir) {
    struct stat st {};
    return ::lstat(dir.c_str(), &st) == 0 && S_ISDIR(st.st_mode) && st.st_uid == ::geteuid() &&
           (st.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

// Without TMPDIR the temporary folder is the user's own /tmp/quiller-UID (created 0700), so users
// never share the error log; when another user holds that name, XDG_RUNTIME_DIR. Failing both,
// the name is kept and what is written there refuses anything not the user's own.
std::string private_temp_dir() {
    const std::string dir = "/tmp/quiller-" + std::to_string(::geteuid());
    ::mkdir(dir.c_str(), 0700);  // an existing one is checked like a new one
    if (is_private_folder(dir)) return dir;
    const std::string runtime = env_or_empty("XDG_RUNTIME_DIR");
    if (!runtime.empty() && is_private_folder(runtime)) return runtime;
    return dir;
}

}  // namespace

std::string PosixEnvironment::temp_dir() {
    if (temp_dir_.empty()) {
        temp_dir_ = env_or_empty("TMPDIR");
        if (temp_dir_.empty()) temp_dir_ = private_temp_dir();
        if (temp_dir_.back() != '/') temp_dir_ += '/';
    }
    return temp_dir_;
}

double PosixClock::now() {
    const std::time_t t = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&t, &local);
    return value::date_serial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) +
           value::time_serial(local.tm_hour, local.tm_min, local.tm_sec);
}

std::int64_t PosixClock::utc_seconds() {
    return static_cast<std::int64_t>(std::time(nullptr));
}

double PosixClock::monotonic_seconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void PosixClock::sleep_ms(int ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

}  // namespace quiller::posix

namespace quiller {

std::unique_ptr<FileSystem> make_file_system() {
    return std::make_unique<posix::PosixFileSystem>();
}
std::unique_ptr<Environment> make_environment() {
    return std::make_unique<posix::PosixEnvironment>();
}
std::unique_ptr<Clock> make_clock() {
    return std::make_unique<posix::PosixClock>();
}

}  // namespace quiller
