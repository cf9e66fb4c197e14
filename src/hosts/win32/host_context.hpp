// What the host's windows share: the settings store for their placements, the services that
// start Notepad and open documents, the program's version, and the request to end the program
// that a window's button or close box leaves for the host to act on outside the window.
#pragma once

#include <windows.h>

#include <string>

#include "os/platform.hpp"
#include "ui/window_placement.hpp"

namespace quiller::win32 {

struct HostContext {
    SettingsStore& settings;
    Processes& processes;
    FileSystem& files;
    std::string version;         // "0.1.0"
    std::string program_folder;  // the folder of quiller.exe, without the trailing "\"
    std::string script_file;     // the script being debugged (`cmdEdit`)
    bool end_requested = false;  // the user ended the whole program at once
};

// Starts "notepad.exe " + file as a normal, focused window.
void open_in_notepad(HostContext& c, const std::string& file);

// Shows the about box (product and version) over `owner`.
void show_about(HostContext& c, HWND owner);

}  // namespace quiller::win32
