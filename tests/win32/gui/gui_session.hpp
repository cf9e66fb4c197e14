// One run of a script with the desktop host on the test's thread while a driver works its
// windows from a second thread. Started programs and opened documents are only recorded.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "gui_driver.hpp"
#include "hosts/common/registry_settings.hpp"
#include "hosts/win32/win32_host.hpp"
#include "os/platform.hpp"

namespace quiller::win32::test {

class RecordingProcesses final : public Processes {
  public:
    std::optional<std::uint32_t> shell_command(const std::string& command, bool,
                                               WindowState) override {
        commands.push_back(command);
        return 0;
    }
    void wait_for_process(std::uint32_t) override {}
    int open_document(const std::string& file, const std::string& verb) override {
        commands.push_back(verb + " " + file);
        return kOpenFirstSuccess;
    }
    bool is_windows_nt() override { return true; }
    void exit_system(int) override {}
    std::vector<std::string> commands;
};

struct Session {
    Session();
    ~Session();
    // Writes the script (lines joined with CR LF) into the temporary folder and runs it with
    // `arguments` after its name; `drive` runs meanwhile. The run's exit status.
    int run(const std::vector<std::string>& lines, const std::function<void(Driver&)>& drive,
            const std::string& arguments = {});
    // Runs the engine with this command line as it is (no script written).
    int run_command(const std::string& command_line, const std::function<void(Driver&)>& drive);
    std::string temp_path(const std::string& name) const;
    std::string read_file(const std::string& path) const;

    Platform platform;
    RecordingProcesses* processes;  // owned by `platform`
    std::unique_ptr<RegistrySettings> settings;
    std::unique_ptr<Win32Host> host;
    std::string script;  // the last script's path
};

// The host's settings key, emptied; the tests run only inside Wine's own registry.
void clear_settings();
bool running_under_wine();

}  // namespace quiller::win32::test
