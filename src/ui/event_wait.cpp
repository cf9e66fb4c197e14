#include "ui/event_wait.hpp"

#include <algorithm>

namespace quiller {

bool wait_with_events(const EventWait& w, int ms, const std::function<bool()>& stop) {
    for (int left = ms; left > 0; left -= kEventSliceMs) {
        w.sleep_ms(std::min(left, kEventSliceMs));
        w.process_events();
        if (stop && stop()) return true;
    }
    return false;
}

}  // namespace quiller
