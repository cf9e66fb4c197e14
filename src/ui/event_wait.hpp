// Waiting on the one thread without freezing a window: a wait is cut into slices of at most
// 100 ms, and pending window events run between them.
#pragma once

#include <functional>

namespace quiller {

inline constexpr int kEventSliceMs = 100;

struct EventWait {
    std::function<void()> process_events;
    std::function<void(int ms)> sleep_ms;
};

// Sleeps `ms` in slices, processing events after each; returns early (true) as soon as
// `stop` says so after a slice.
bool wait_with_events(const EventWait& w, int ms, const std::function<bool()>& stop = {});

}  // namespace quiller
