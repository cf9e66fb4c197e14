// The Win32 services the platform is made of.
#include "os/win32/win32_platform.hpp"
#include "os/win32/win32_regional.hpp"

namespace quiller {

std::unique_ptr<FileSystem> make_file_system() {
    return std::make_unique<win32::Win32FileSystem>();
}
std::unique_ptr<Environment> make_environment() {
    return std::make_unique<win32::Win32Environment>();
}
std::unique_ptr<Clock> make_clock() {
    return std::make_unique<win32::Win32Clock>();
}

}  // namespace quiller

namespace quiller::win32 {

RegionalSettings Win32Environment::regional_settings() {
    return user_regional_settings();
}

}  // namespace quiller::win32
