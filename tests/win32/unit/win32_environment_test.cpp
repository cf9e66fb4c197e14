// The Win32 environment, clock, error texts and path forms (no timings: the clock's now only).
#include <gtest/gtest.h>
#include <windows.h>

#include <cmath>

#include "os/win32/win32_platform.hpp"
#include "os/win32/win32_regional.hpp"
#include "scratch_folder.hpp"
#include "value/value.hpp"

namespace quiller::testing {
namespace {

TEST(Win32Environment, VariablesAreUtf8) {
    win32::Win32Environment env;
    SetEnvironmentVariableW(L"QUILLER_TEST_VALUE", L"caf\u00E9 \u20AC");
    EXPECT_EQ(env.get("QUILLER_TEST_VALUE"), "caf\xC3\xA9 \xE2\x82\xAC");
    EXPECT_EQ(env.get("quiller_test_value"), "caf\xC3\xA9 \xE2\x82\xAC");  // names ignore case
    const std::wstring big(5000, L'x');
    SetEnvironmentVariableW(L"QUILLER_TEST_VALUE", big.c_str());
    EXPECT_EQ(env.get("QUILLER_TEST_VALUE"), std::string(5000, 'x'));
    SetEnvironmentVariableW(L"QUILLER_TEST_VALUE", nullptr);
    EXPECT_EQ(env.get("QUILLER_TEST_VALUE"), "");
}

TEST(Win32Environment, TemporaryFolderFromTmp) {
    win32::Win32Environment env;
    {
        const ScopedEnv tmp("TMP", "C:\\windows");
        EXPECT_EQ(env.temp_dir(), "C:\\windows\\");  // the trailing "\" is the system's
    }
    EXPECT_TRUE(env.temp_dir().ends_with("\\"));
}

TEST(Win32Clock, LocalTime) {
    SYSTEMTIME t{};
    GetLocalTime(&t);
    const double expected = value::date_serial(t.wYear, t.wMonth, t.wDay) +
                            value::time_serial(t.wHour, t.wMinute, t.wSecond);
    EXPECT_NEAR(win32::Win32Clock().now(), expected, 5.0 / 86400);
}

TEST(Win32ErrorText, CarriesTheCode) {
    for (const DWORD code : {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_PATH_NOT_FOUND}) {
        const std::string text = win32::system_error(code).shown();
        const std::string tail = " (" + std::to_string(code) + ")";
        ASSERT_TRUE(text.ends_with(tail)) << text;
        const std::string message = text.substr(0, text.size() - tail.size());
        EXPECT_FALSE(message.empty());
        EXPECT_EQ(message.find_first_of("\r\n"), std::string::npos) << text;
        EXPECT_NE(message.back(), '.') << text;
    }
    EXPECT_TRUE(win32::system_error(0x7FFF0000).shown().ends_with(" (2147418112)"));
}

TEST(Win32Paths, LongPathForms) {
    const std::string long_name(300, 'n');
    EXPECT_EQ(win32::native_path("C:\\" + long_name), L"\\\\?\\C:\\" + win32::widen(long_name));
    EXPECT_EQ(win32::native_path("C:/a/../" + long_name), L"\\\\?\\C:\\" + win32::widen(long_name));
    EXPECT_EQ(win32::native_path("\\\\server\\share\\" + long_name),
              L"\\\\?\\UNC\\server\\share\\" + win32::widen(long_name));
    const std::wstring already = L"\\\\?\\C:\\" + win32::widen(long_name);
    EXPECT_EQ(win32::native_path(win32::narrow(already)), already);
    EXPECT_EQ(win32::native_path("relative\\name.txt"), L"relative\\name.txt");
    EXPECT_EQ(win32::native_path("C:\\short.txt"), L"C:\\short.txt");
    EXPECT_EQ(win32::widen("\xC3\xA9"), L"\u00E9");
    EXPECT_EQ(win32::narrow(L"\u20AC"), "\xE2\x82\xAC");
}

// The separators are the user's; Wine's default user locale is en-US.
TEST(Win32Regional, NumberSeparatorsOfTheUser) {
    const win32::NumberSeparators s = win32::user_number_separators();
    EXPECT_FALSE(s.decimal.empty());
    EXPECT_NE(s.decimal, s.thousands);
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
    GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH);
    if (std::wstring(name) == L"en-US") {
        EXPECT_EQ(s.decimal, ".");
        EXPECT_EQ(s.thousands, ",");
    }
}

}  // namespace
}  // namespace quiller::testing
