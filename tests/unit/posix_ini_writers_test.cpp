// Concurrent writeini: writer processes of distinct keys to one file lose nothing.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "os/ini_profile.hpp"
#include "os/platform.hpp"
#include "scratch_folder.hpp"

namespace quiller {
namespace {

using IniWriters = testing::ScratchFolder;

TEST_F(IniWriters, ConcurrentProcessesKeepEveryKey) {
    const std::string file = path("shared.ini");
    constexpr int kWriters = 4, kKeys = 150;
    std::vector<pid_t> children;
    for (int w = 0; w < kWriters; ++w) {
        const pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            Platform platform = make_platform();
            ini::IniFiles ini(*platform.files, *platform.clock);
            bool ok = true;
            for (int k = 0; k < kKeys; ++k) {
                const std::string key = "w" + std::to_string(w) + "k" + std::to_string(k);
                ini::WriteFailure failure;
                ok &= ini.write(file, {ini::EditKind::SetValue, "s", key, "v"}, "\n", failure);
            }
            ::_exit(ok ? 0 : 1);
        }
        children.push_back(pid);
    }
    for (const pid_t pid : children) {
        int status = 0;
        ::waitpid(pid, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    Platform platform = make_platform();
    const auto bytes = platform.files->read_file(file);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(ini::section_entries(*bytes, "s").size(), std::size_t{kWriters * kKeys});
}

}  // namespace
}  // namespace quiller
