#include "os/process_options.hpp"

#include <algorithm>
#include <cmath>

#include "value/value.hpp"

namespace quiller::process {

WindowState window_state(std::string_view options) {
    WindowState state = WindowState::Normal;
    if (options.find("minimized") != std::string_view::npos) state = WindowState::Minimized;
    if (options.find("maxmized") != std::string_view::npos) state = WindowState::Maximized;
    if (options.find("hidden") != std::string_view::npos) state = WindowState::Hidden;
    return state;
}

std::optional<int> shutdown_mode(std::string_view text) {
    const std::optional<double> v = value::parse_locale_number(text);
    if (!v || *v > 5) return 0;
    const double mode = std::nearbyint(*v);  // the default rounding mode: half to even
    if (mode < 0) return std::nullopt;
    return static_cast<int>(mode);
}

std::string shutdown_action(int mode) {
    static constexpr const char* kActions[] = {"poweroff", "reboot", "logoff"};
    if (mode < 0 || mode > 5) return {};
    std::string action = kActions[mode / 2];
    if (mode % 2 == 1) action += " force";
    return action;
}

std::optional<std::string> expand_environment(std::string_view text, Environment& environment) {
    if (std::count(text.begin(), text.end(), '%') % 2 != 0) return std::nullopt;
    std::string out;
    std::size_t i = 0;
    while (i < text.size()) {
        const std::size_t p = text.find('%', i);
        if (p == std::string_view::npos) break;
        const std::size_t q = text.find('%', p + 1);
        out += text.substr(i, p - i);
        const std::string name(text.substr(p + 1, q - p - 1));
        out += name.empty() ? std::string("%") : environment.get(name);
        i = q + 1;
    }
    if (i < text.size()) out += text.substr(i);
    return out;
}

}  // namespace quiller::process
