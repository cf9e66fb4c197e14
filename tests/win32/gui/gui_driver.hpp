// Drives the desktop host's windows from a second thread of the test program, as a user would:
// finds a window by a control it holds, reads captions and texts, clicks buttons, types and
// presses keys through the window messages, and asks for screenshots.
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quiller::win32::test {

class Driver {
  public:
    explicit Driver(DWORD ui_thread) : ui_thread_(ui_thread) {}

    // Runs the steps of `drive`; they end early, as a failed assertion ends them, when a window
    // they wait for never shows.
    void run(const std::function<void(Driver&)>& drive);

    // The visible top-level window of the host holding the control `id` (waits up to 10 s;
    // a test failure that ends the steps when none shows).
    HWND window_with(int id);
    // Waits until `window` is hidden or gone; false after 10 s.
    bool wait_gone(HWND window);
    // Waits until the control's text (id 0: the window's caption) is `text`; false after 10 s.
    bool wait_text(HWND window, int id, std::string_view text);

    // The visible top-level windows of a thread.
    static std::vector<HWND> windows(DWORD thread);
    static std::string text(HWND window);
    static std::string text(HWND window, int id) { return text(GetDlgItem(window, id)); }
    static bool shown(HWND window, int id) { return IsWindowVisible(GetDlgItem(window, id)); }
    // The default push button's id (the dialog manager's DM_GETDEFID).
    static int default_button(HWND window);

    void click(HWND window, int id);
    // A key pressed in the focused control (Enter, Esc, Tab ...).
    void key(WORD vk);
    // Alt + letter: a "&" mnemonic.
    void alt(char letter);
    void type(std::string_view text);
    HWND focus() const;
    // Waits until `control` has the focus; false after 10 s.
    bool wait_focus(HWND control);

    // A PNG of the window as the screen shows it, in the build folder (when screenshots run).
    void shot(HWND window, std::string_view name);

  private:
    void post_to_focus(UINT msg, WPARAM w, LPARAM l, UINT then = 0);
    DWORD ui_thread_;
};

}  // namespace quiller::win32::test
