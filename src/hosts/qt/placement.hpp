// Twips on a Qt screen, and the placement of a window read from and written to the settings
// store (in the normal window state only).
#pragma once

#include <string>

#include "ui/window_placement.hpp"

class QWidget;

namespace quiller::qt {

// Device-independent pixels <-> twips at the primary screen's logical DPI (15 twips a pixel at
// 96 DPI); Qt scales device-independent pixels for high-DPI screens itself.
double twips_per_pixel();
int to_pixels(int twips);
int to_twips(int pixels);
// The primary screen's available area, in twips, and that of every screen.
TwipsRect primary_screen();
std::vector<TwipsRect> all_screens();

// One window's placement under its key.
class WindowPlacement {
  public:
    WindowPlacement(SettingsStore& store, std::string key) : store_(store), key_(std::move(key)) {}
    // Reads the stored placement over `defaults`, corrects one off every screen, applies it.
    void restore(QWidget& w, const TwipsRect& defaults);
    // Places the window without reading the store (a fixed place such as the question window's).
    void apply(QWidget& w, const TwipsRect& r);
    // Writes the window's placement, when it was restored and is in the normal state.
    void save(const QWidget& w);
    const std::string& key() const { return key_; }
    SettingsStore& store() { return store_; }

  private:
    SettingsStore& store_;
    std::string key_;
    bool restored_ = false;  // the placement marker: saved only after a restore
};

}  // namespace quiller::qt
