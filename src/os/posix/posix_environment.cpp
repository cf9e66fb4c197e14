// Environment, temporary directory and clock on POSIX.
#include <pwd.h>
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

std::string PosixEnvironment::temp_dir() {
    std::string dir = env_or_empty("TMPDIR");
    if (dir.empty()) dir = "/tmp";
    if (dir.back() != '/') dir += '/';
    return dir;
}

double PosixClock::now() {
    const std::time_t t = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&t, &local);
    return value::date_serial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) +
           value::time_serial(local.tm_hour, local.tm_min, local.tm_sec);
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
