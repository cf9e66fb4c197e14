// Where the windows open: the placement store (Top, Left, Height and Width in twips, as REG_SZ
// texts under the program's settings key + "\" + the window's name), the default places computed
// from the screen size, and the correction of a placement that would put a window off every
// screen. All sizes are twips (1440 to the inch); hosts convert at the screen's DPI.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quiller {

inline constexpr std::string_view kSettingsKey = "HKEY_CURRENT_USER\\Software\\Quiller";
// The progress windows keep their placement below the vendor's machine-wide key.
inline constexpr std::string_view kVendorKey = "HKEY_LOCAL_MACHINE\\Software\\Corvale";

struct TwipsRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const TwipsRect&) const = default;
};

// The REG_SZ values of a registry key, as the windows need them. The host hands the windows one
// over the platform's registry; tests use one over a temporary store.
class SettingsStore {
  public:
    virtual ~SettingsStore() = default;
    // The text of a value; nothing when the key or value is missing or can't be read.
    virtual std::optional<std::string> read(std::string_view key, std::string_view name) = 0;
    // Writes a REG_SZ value, creating the key; a failure is ignored (placements are a comfort).
    virtual void write(std::string_view key, std::string_view name, std::string_view value) = 0;
};

// "HKEY_CURRENT_USER\Software\Quiller\DisplayForm" for `root` kSettingsKey and "DisplayForm".
std::string placement_key(std::string_view window, std::string_view root = kSettingsKey);

// The stored placement of a window: each of Top, Left, Height and Width replaces its default
// where a whole number is stored (sizes only when above 0).
TwipsRect load_placement(SettingsStore& store, std::string_view key, TwipsRect defaults);
// Writes Top, Height, Left and Width, in this order.
void save_placement(SettingsStore& store, std::string_view key, const TwipsRect& r);
// "WindowState" (0 normal, 1 minimised, 2 maximised); 0 when none is stored.
int load_window_state(SettingsStore& store, std::string_view key);
void save_window_state(SettingsStore& store, std::string_view key, int state);

// A window of the size given, centred on the screen and raised by `raise` twips.
TwipsRect centred(const TwipsRect& screen, int width, int height, int raise = 0);
// The output window's default: 5/6 of the screen's width and height, centred.
TwipsRect output_default(const TwipsRect& screen);
// The debugger's default: 9400 x 6500 twips, centred.
TwipsRect debug_default(const TwipsRect& screen);
// The question and copy windows: centred horizontally, 300 twips above the vertical centre.
TwipsRect question_place(const TwipsRect& screen, int width, int height);

// A placement that shows at least a grip of the window (its top edge, where the title bar is)
// on one of the screens is kept. Otherwise the window moves onto the screen it overlaps most
// (the first when none), shrunk to fit it where it is larger.
TwipsRect keep_on_screen(const TwipsRect& r, const std::vector<TwipsRect>& screens);

}  // namespace quiller
