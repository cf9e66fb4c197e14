// What every Win32 window of the desktop host needs: texts in UTF-8, the system's message font
// at a window's DPI, twips to pixels and back, controls made with one call, and the screens.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "ui/window_placement.hpp"

namespace quiller::win32 {

// Texts of windows and controls, in UTF-8.
void set_text(HWND window, std::string_view utf8);
std::string get_text(HWND window);

// The DPI a window is shown at (96 on a screen at 100 %); the system's when it has none.
int window_dpi(HWND window);
int system_dpi();
inline int twips_to_px(int twips, int dpi) {
    return MulDiv(twips, dpi, 1440);
}
inline int px_to_twips(int px, int dpi) {
    return MulDiv(px, 1440, dpi);
}

// The system's message font ("Segoe UI 9" on Windows 10) at a DPI. The caller owns the font.
HFONT make_message_font(int dpi);
// The height of one line of a font, in pixels.
int line_height(HWND window, HFONT font);

// A child control: class, text, style (WS_CHILD | WS_VISIBLE are added), id; the font set.
HWND make_control(HWND parent, const wchar_t* window_class, std::string_view text, DWORD style,
                  int id, HFONT font, DWORD ex_style = 0);
// Moves a child to a rectangle given in twips of the parent's client area.
void place_twips(HWND control, const TwipsRect& r, int dpi);
// Sets the font of every child of a window (after a DPI change).
void set_children_font(HWND parent, HFONT font);

// Placements in twips on the virtual screen (measured at the system DPI, so that what is
// stored reads back to the same pixels).
TwipsRect window_twips(HWND window);
void place_window_twips(HWND window, const TwipsRect& r);
// The primary screen and every screen, in twips.
TwipsRect primary_screen_twips();
std::vector<TwipsRect> screens_twips();
// Whether the window is in its normal state (neither minimised nor maximised).
bool normal_state(HWND window);

// The program's icon (resource 1), large or small.
HICON program_icon(bool small);

}  // namespace quiller::win32
