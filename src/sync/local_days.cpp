#include "sync/local_days.hpp"

#include <ctime>

namespace quiller::sync {
namespace {

constexpr std::int64_t kDay = 86400;
constexpr std::int64_t kDaysFrom1899To1970 = 25569;

std::int64_t floor_div(std::int64_t a, std::int64_t b) {
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}

// Days since 1970-01-01 of a civil date (proleptic Gregorian).
std::int64_t days_from_civil(std::int64_t y, unsigned m, unsigned d) {
    y -= m <= 2;
    const std::int64_t era = floor_div(y, 400);
    const auto yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

// Local time minus UTC at the moment `t`, in seconds.
std::int64_t local_offset(std::int64_t t) {
    const auto tt = static_cast<std::time_t>(t);
    std::tm local{};
#ifdef _WIN32
    if (localtime_s(&local, &tt) != 0) return 0;
#else
    if (localtime_r(&tt, &local) == nullptr) return 0;
#endif
    const std::int64_t days =
        days_from_civil(local.tm_year + 1900LL, local.tm_mon + 1, local.tm_mday);
    return days * kDay + local.tm_hour * 3600 + local.tm_min * 60 + local.tm_sec - t;
}

}  // namespace

// Before 30 December 1899 the whole part counts days back and the fraction still counts the
// time after midnight (-1.25 is 29 December 1899, 6:00).
double day_number_of_local_seconds(std::int64_t local_seconds) {
    const std::int64_t days = floor_div(local_seconds, kDay) + kDaysFrom1899To1970;
    const double fraction =
        static_cast<double>(local_seconds - floor_div(local_seconds, kDay) * kDay) / kDay;
    return days >= 0 ? static_cast<double>(days) + fraction : static_cast<double>(days) - fraction;
}

double LocalDays::day_number(std::int64_t unix_seconds) {
    const std::int64_t bucket = floor_div(unix_seconds, kBucket);
    Slot& slot = slots_[static_cast<std::size_t>(bucket) % slots_.size()];
    if (slot.bucket != bucket) {
        const std::int64_t first = local_offset(bucket * kBucket);
        const std::int64_t last = local_offset(bucket * kBucket + kBucket - 1);
        slot = {bucket, first == last ? first : kMixed};
    }
    const std::int64_t offset = slot.offset == kMixed ? local_offset(unix_seconds) : slot.offset;
    return day_number_of_local_seconds(unix_seconds + offset);
}

}  // namespace quiller::sync
