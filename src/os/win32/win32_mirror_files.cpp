// The mirror's copy on Win32: CopyFileExW keeps times and attributes; MoveFileExW replaces.
#include "os/mirror_files.hpp"
#include "os/win32/win32_file_operations.hpp"

namespace quiller {
namespace {

class Win32MirrorFiles final : public MirrorFiles {
  public:
    bool copy_new(const std::string& from, const std::string& to, int& error) override {
        const std::wstring target = win32::long_path(to);
        if (CopyFileExW(win32::long_path(from).c_str(), target.c_str(), nullptr, nullptr, nullptr,
                        COPY_FILE_FAIL_IF_EXISTS))
            return true;
        error = win32::last_error();
        if (error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS) {
            SetFileAttributesW(target.c_str(), FILE_ATTRIBUTE_NORMAL);
            DeleteFileW(target.c_str());
        }
        return false;
    }

    bool replace(const std::string& from, const std::string& to, int& error) override {
        if (MoveFileExW(win32::long_path(from).c_str(), win32::long_path(to).c_str(),
                        MOVEFILE_REPLACE_EXISTING))
            return true;
        error = win32::last_error();
        return false;
    }
};

}  // namespace

std::unique_ptr<MirrorFiles> make_mirror_files() {
    return std::make_unique<Win32MirrorFiles>();
}

}  // namespace quiller
