// Operating-system services, each behind its own interface. A POSIX and a Win32 implementation
// are chosen at build time by `make_platform()`; tests substitute fakes per service.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "os/file_system.hpp"
#include "os/network.hpp"
#include "os/processes.hpp"
#include "os/registry_store.hpp"
#include "value/value.hpp"

namespace quiller {

// Physical memory, in bytes.
struct MemoryStatus {
    std::int64_t total = 0;
    std::int64_t available = 0;
};

// The regional conventions numbers and dates follow, with texts of their own. The program
// hands them to the value layer at start-up (value::set_conventions(settings.view())).
struct RegionalSettings {
    RegionalSettings() : RegionalSettings(value::NumberConventions{}) {}
    explicit RegionalSettings(const value::NumberConventions& c)
        : decimal(c.decimal),
          thousands(c.thousands),
          currency(c.currency),
          currency_format(c.currency_format),
          short_date(c.short_date),
          long_time(c.long_time),
          am(c.am),
          pm(c.pm) {}
    value::NumberConventions view() const {
        return {decimal, thousands, currency, currency_format, short_date, long_time, am, pm};
    }

    std::string decimal, thousands, currency, currency_format, short_date, long_time, am, pm;
};

class Environment {
  public:
    virtual ~Environment() = default;
    // The value of an environment variable; empty when it is not set.
    virtual std::string get(const std::string& name) = 0;
    // The temporary directory, with its trailing separator.
    virtual std::string temp_dir() = 0;
    // The operating-system family: "Windows95", "Windows NT", or empty.
    virtual std::string os_family() = 0;
    virtual MemoryStatus memory() = 0;
    // The user's regional settings; en-US's where the platform keeps none.
    virtual RegionalSettings regional_settings() { return {}; }
};

class Clock {
  public:
    virtual ~Clock() = default;
    // The present local date and time as a day number (days since 30 December 1899).
    virtual double now() = 0;
    // Seconds since an arbitrary start, for seeding and timing.
    virtual double monotonic_seconds() = 0;
    // The present time as file times count it: seconds since 1970-01-01 UTC.
    virtual std::int64_t utc_seconds() = 0;
    virtual void sleep_ms(int ms) = 0;
};

// The set of services one run uses.
struct Platform {
    std::unique_ptr<FileSystem> files;
    std::unique_ptr<Environment> environment;
    std::unique_ptr<Clock> clock;
    std::unique_ptr<RegistryStore> registry;
    std::unique_ptr<Processes> processes;
    std::unique_ptr<Network> network;
};

// The services of the platform this build targets.
Platform make_platform();
std::unique_ptr<Environment> make_environment();
std::unique_ptr<Clock> make_clock();

}  // namespace quiller
