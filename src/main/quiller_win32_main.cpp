// quiller.exe: runs a .prg script with the Win32 desktop windows. It is what a .prg file opens
// with; `quiller.exe /register` and `/unregister`, as the only word, set up and remove that
// association for the present user.
#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <string>
#include <vector>

#include "bindings/language.hpp"
#include "engine/engine.hpp"
#include "hosts/common/registry_settings.hpp"
#include "hosts/win32/file_association.hpp"
#include "hosts/win32/win32_host.hpp"
#include "main/command_line.hpp"
#include "os/win32/win32_console.hpp"
#include "os/win32/win32_platform.hpp"
#include "value/value.hpp"

namespace {

std::wstring own_path() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

int association(bool add) {
    const long r = add ? quiller::win32::register_prg_association(own_path())
                       : quiller::win32::unregister_prg_association();
    std::wstring text =
        r != 0
            ? quiller::win32::widen(quiller::win32::system_message(static_cast<unsigned long>(r)))
        : add ? L".prg files now open with " + own_path() + L" for this user."
              : std::wstring(L".prg files no longer open with Quiller for this user.");
    MessageBoxW(nullptr, text.c_str(), L"Quiller",
                MB_OK | (r != 0 ? MB_ICONERROR : MB_ICONINFORMATION));
    return r != 0 ? 1 : 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int) {
    const INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX),
                                        ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    const std::vector<std::string> args = quiller::win32::utf8_arguments();
    if (args.size() == 1 && (args[0] == "/register" || args[0] == "/unregister"))
        return association(args[0] == "/register");

    quiller::Platform platform = quiller::make_platform();
    // Numbers and dates follow the user's regional settings.
    quiller::value::set_conventions(platform.environment->regional_settings().view());
    quiller::RegistrySettings settings(*platform.registry);
    quiller::win32::Win32Host host(settings, *platform.processes, *platform.files);
    quiller::Engine engine(host, platform, quiller::standard_language());
    std::vector<const char*> pointers{"quiller"};
    for (const std::string& a : args) pointers.push_back(a.c_str());
    return engine.run(
        quiller::join_command_line(static_cast<int>(pointers.size()), pointers.data()));
}
