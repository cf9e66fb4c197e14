#include "ui/window_placement.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace quiller {
namespace {

// A stored whole number ("1234", "-15", "1234.0" as written by hand); nothing otherwise.
std::optional<int> stored_number(SettingsStore& store, std::string_view key,
                                 std::string_view name) {
    const std::optional<std::string> text = store.read(key, name);
    if (!text) return std::nullopt;
    std::string_view t = *text;
    while (!t.empty() && t.front() == ' ') t.remove_prefix(1);
    while (!t.empty() && t.back() == ' ') t.remove_suffix(1);
    double v = 0;
    const auto [end, ec] = std::from_chars(t.data(), t.data() + t.size(), v);
    if (ec != std::errc() || end != t.data() + t.size() || !std::isfinite(v)) return std::nullopt;
    if (v < -1e9 || v > 1e9) return std::nullopt;
    return static_cast<int>(std::lround(v));
}

// The area two rectangles share (0 when apart).
long long overlap(const TwipsRect& a, const TwipsRect& b) {
    const long long w =
        std::min<long long>(a.left + a.width, b.left + b.width) - std::max(a.left, b.left);
    const long long h =
        std::min<long long>(a.top + a.height, b.top + b.height) - std::max(a.top, b.top);
    return w > 0 && h > 0 ? w * h : 0;
}

// The grip that must stay on a screen: the top 300 twips of the window, at least 600 wide.
bool grip_visible(const TwipsRect& r, const TwipsRect& screen) {
    const TwipsRect grip{r.left, r.top, r.width, std::min(r.height, 300)};
    const long long w = std::min<long long>(grip.left + grip.width, screen.left + screen.width) -
                        std::max(grip.left, screen.left);
    return overlap(grip, screen) > 0 && w >= std::min(r.width, 600) &&
           r.top >= screen.top;  // a title bar above the screen can't be dragged back
}

}  // namespace

std::string placement_key(std::string_view window, std::string_view root) {
    std::string key(root);
    key += '\\';
    key += window;
    return key;
}

TwipsRect load_placement(SettingsStore& store, std::string_view key, TwipsRect defaults) {
    if (const auto v = stored_number(store, key, "Top")) defaults.top = *v;
    if (const auto v = stored_number(store, key, "Left")) defaults.left = *v;
    if (const auto v = stored_number(store, key, "Height"); v && *v > 0) defaults.height = *v;
    if (const auto v = stored_number(store, key, "Width"); v && *v > 0) defaults.width = *v;
    return defaults;
}

void save_placement(SettingsStore& store, std::string_view key, const TwipsRect& r) {
    store.write(key, "Top", std::to_string(r.top));
    store.write(key, "Height", std::to_string(r.height));
    store.write(key, "Left", std::to_string(r.left));
    store.write(key, "Width", std::to_string(r.width));
}

int load_window_state(SettingsStore& store, std::string_view key) {
    const std::optional<int> v = stored_number(store, key, "WindowState");
    return v && *v >= 0 && *v <= 2 ? *v : 0;
}

void save_window_state(SettingsStore& store, std::string_view key, int state) {
    store.write(key, "WindowState", std::to_string(state));
}

TwipsRect centred(const TwipsRect& screen, int width, int height, int raise) {
    return {screen.left + (screen.width - width) / 2,
            screen.top + (screen.height - height) / 2 - raise, width, height};
}

TwipsRect output_default(const TwipsRect& screen) {
    constexpr double kShare = 0.8333333333333334;
    return centred(screen, static_cast<int>(screen.width * kShare),
                   static_cast<int>(screen.height * kShare));
}

TwipsRect debug_default(const TwipsRect& screen) {
    return centred(screen, 9400, 6500);
}

TwipsRect question_place(const TwipsRect& screen, int width, int height) {
    return centred(screen, width, height, 300);
}

TwipsRect keep_on_screen(const TwipsRect& r, const std::vector<TwipsRect>& screens) {
    if (screens.empty()) return r;
    for (const TwipsRect& s : screens)
        if (grip_visible(r, s)) return r;
    // The screen it overlaps most; with no overlap at all, the nearest one.
    const auto distance = [&](const TwipsRect& s) {
        const long long dx =
            std::max({0LL, 1LL * s.left - (r.left + r.width), 1LL * r.left - (s.left + s.width)});
        const long long dy =
            std::max({0LL, 1LL * s.top - (r.top + r.height), 1LL * r.top - (s.top + s.height)});
        return dx * dx + dy * dy;
    };
    const TwipsRect* best = &screens.front();
    for (const TwipsRect& s : screens) {
        const long long gain = overlap(r, s) - overlap(r, *best);
        if (gain > 0 || (gain == 0 && distance(s) < distance(*best))) best = &s;
    }
    TwipsRect fixed = r;
    fixed.width = std::min(r.width, best->width);
    fixed.height = std::min(r.height, best->height);
    fixed.left = std::clamp(r.left, best->left, best->left + best->width - fixed.width);
    fixed.top = std::clamp(r.top, best->top, best->top + best->height - fixed.height);
    return fixed;
}

}  // namespace quiller
