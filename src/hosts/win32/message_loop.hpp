// The host's message loop on the program's one thread: pending messages run between units of
// work, and a modal window holds its caller while the other windows of the program wait.
#pragma once

#include <windows.h>

#include <functional>

namespace quiller::win32 {

// Runs the messages that are pending, without waiting. Keys for a dialog go through its dialog
// manager (Tab, Enter, Esc, mnemonics).
void pump_messages();

// Runs messages until `done` says so. The program's other windows are disabled meanwhile, so
// `window` is modal; they are enabled again afterwards.
void run_modal(HWND window, const std::function<bool()>& done);

}  // namespace quiller::win32
