#include "gui_session.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <fstream>
#include <sstream>
#include <thread>

#include "bindings/language.hpp"
#include "engine/engine.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32::test {
namespace {

// Closes whatever the host still shows until the run is over (after a failed step).
void rescue(DWORD thread, const std::atomic<bool>& finished) {
    for (int i = 0; i < 100 && !finished; ++i) {
        for (HWND h : Driver::windows(thread)) PostMessageW(h, WM_CLOSE, 0, 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
}

}  // namespace

bool running_under_wine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

void clear_settings() {
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Quiller");
}

Session::Session() : platform(make_platform()) {
    auto fake = std::make_unique<RecordingProcesses>();
    processes = fake.get();
    platform.processes = std::move(fake);
    settings = std::make_unique<RegistrySettings>(*platform.registry);
    host = std::make_unique<Win32Host>(*settings, *platform.processes, *platform.files);
}

Session::~Session() = default;

std::string Session::temp_path(const std::string& name) const {
    return platform.environment->temp_dir() + name;
}

std::string Session::read_file(const std::string& path) const {
    std::ifstream in(widen(path).c_str(), std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

int Session::run(const std::vector<std::string>& lines, const std::function<void(Driver&)>& drive,
                 const std::string& arguments) {
    script = temp_path(std::string("quiller-gui-") +
                       ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".prg");
    {
        std::ofstream out(widen(script).c_str(), std::ios::binary);
        for (const std::string& l : lines) out << l << "\r\n";
    }
    return run_command("\"" + script + "\" " + arguments, drive);
}

int Session::run_command(const std::string& command_line,
                         const std::function<void(Driver&)>& drive) {
    std::atomic<bool> finished{false};
    const DWORD ui = GetCurrentThreadId();
    std::thread driver([&] {
        Driver(ui).run(drive);
        for (int i = 0; i < 150 && !finished && !::testing::Test::HasFailure(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        if (!finished) {
            ADD_FAILURE() << "the run did not end after the driver's last step";
            rescue(ui, finished);
        }
    });
    Engine engine(*host, platform, standard_language());
    int status = -1;
    try {
        status = engine.run(command_line);
    } catch (...) {
        ADD_FAILURE() << "the run let an exception out";
    }
    finished = true;
    driver.join();
    return status;
}

}  // namespace quiller::win32::test
