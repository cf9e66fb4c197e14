// Moments (seconds since 1970 UTC, as file times come) to local day numbers.
#include <ctime>

#include "value/format.hpp"
#include "value/value.hpp"

namespace quiller::value {

double local_day_number(std::int64_t unix_seconds) {
    const auto t = static_cast<std::time_t>(unix_seconds);
    std::tm local{};
#ifdef _WIN32
    if (localtime_s(&local, &t) != 0) return 0;
#else
    if (localtime_r(&t, &local) == nullptr) return 0;
#endif
    return date_serial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) +
           time_serial(local.tm_hour, local.tm_min, local.tm_sec);
}

}  // namespace quiller::value
