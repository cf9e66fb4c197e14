// The base of the host's windows: a dialog-manager window (so Tab, Enter, Esc and "&" mnemonics
// work as everywhere on Windows) made without a template's controls; each window adds its
// controls in the system's message font, lays them out in twips at its DPI, and follows DPI
// changes when dragged to another screen.
#pragma once

#include <windows.h>

#include <string_view>

#include "ui/window_placement.hpp"

namespace quiller::win32 {

// The design grid the windows share, in twips: the margin around and between controls and the
// size of a command button.
constexpr int kMargin = 120;
constexpr int kButtonWidth = 1215;
constexpr int kButtonHeight = 375;

class Dialog {
  public:
    Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    virtual ~Dialog();

    HWND hwnd() const { return hwnd_; }
    bool loaded() const { return hwnd_ != nullptr; }
    bool visible() const { return hwnd_ && IsWindowVisible(hwnd_); }
    // Shows and activates the window (creating it on first use).
    void show();
    void hide();
    // Destroys the window; the next use creates it again from its design.
    void unload();

  protected:
    // Creates the window with `caption`; `resizable` gives it a sizing frame and maximise box.
    void create(std::string_view caption, bool resizable);
    // Adds the controls (called once, right after the window is made).
    virtual void build() = 0;
    // Places the controls for a client area of `width` x `height` twips.
    virtual void layout(int width, int height) = 0;
    // A button or control notification; true when handled.
    virtual bool command(int /*id*/, int /*code*/) { return false; }
    // The close box (and Esc unless `escape` is overridden).
    virtual void close_box() { hide(); }
    virtual void escape() { close_box(); }
    // The smallest client area, in twips.
    virtual TwipsRect min_size() const { return {0, 0, 3000, 1500}; }
    // Any other message; true (with `result`) when handled.
    virtual bool message(UINT /*msg*/, WPARAM, LPARAM, INT_PTR& /*result*/) { return false; }

    HWND item(int id) const { return GetDlgItem(hwnd_, id); }
    void set_default_button(int id);
    HFONT font() const { return font_; }
    int dpi() const { return dpi_; }
    // Lays the controls out again for the present size.
    void relayout();

  private:
    static INT_PTR CALLBACK procedure(HWND, UINT, WPARAM, LPARAM);
    INT_PTR handle(UINT msg, WPARAM w, LPARAM l);
    void dpi_changed(int dpi, const RECT& suggested);

    HWND hwnd_ = nullptr;
    HFONT font_ = nullptr;
    int dpi_ = 96;
};

}  // namespace quiller::win32
