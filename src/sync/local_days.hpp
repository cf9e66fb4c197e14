// File times (seconds since 1970 UTC) as local-time day numbers (days since 30 December 1899,
// the time of day as the fraction), in whole seconds. The local offset is looked up once per
// quarter hour of file time and reused, so a scan of a million files asks the time-zone rules a
// few times only. One converter per thread.
#pragma once

#include <array>
#include <cstdint>

namespace quiller::sync {

class LocalDays {
  public:
    double day_number(std::int64_t unix_seconds);

  private:
    static constexpr std::int64_t kBucket = 900;
    static constexpr std::int64_t kMixed = INT64_MIN;  // the offset changes within the bucket
    struct Slot {
        std::int64_t bucket = INT64_MIN;
        std::int64_t offset = 0;
    };
    std::array<Slot, 1024> slots_{};
};

// The day number of local seconds (seconds since 1970-01-01 00:00 local time).
double day_number_of_local_seconds(std::int64_t local_seconds);

}  // namespace quiller::sync
