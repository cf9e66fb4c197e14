// quiller_launch: starts a program with a given temporary folder, for the script tests, which
// name the folder of the error log on every platform.
//
//   quiller_launch [--temp FOLDER] PROGRAM [ARG...]
//
// TMP and TEMP (which GetTempPathW reads) become FOLDER; a POSIX path, as the tests under Wine
// give it, is turned into the Windows path Wine maps it to. The program's arguments are passed
// on as written; it inherits the standard handles, and its exit status is returned.
#include <windows.h>

#include <string>

namespace {

// The end of the word of a command line that starts at `p` (maybe in double quotes).
const wchar_t* end_of_word(const wchar_t* p) {
    if (*p == L'"') {
        ++p;
        while (*p && *p != L'"') ++p;
        return *p ? p + 1 : p;
    }
    while (*p && *p != L' ' && *p != L'\t') ++p;
    return p;
}

const wchar_t* skip_blanks(const wchar_t* p) {
    while (*p == L' ' || *p == L'\t') ++p;
    return p;
}

// A word of a command line without its double quotes.
std::wstring unquoted(const wchar_t* begin, const wchar_t* end) {
    std::wstring word(begin, end);
    if (word.size() >= 2 && word.front() == L'"') word = word.substr(1, word.size() - 2);
    return word;
}

// A POSIX path as Wine maps it (its own function when there is one, else the Z: drive).
std::wstring windows_path(const std::wstring& path) {
    if (path.empty() || path[0] != L'/') return path;
    using DosName = wchar_t*(__cdecl*)(const char*);
    const auto dos_name = reinterpret_cast<DosName>(reinterpret_cast<void*>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_dos_file_name")));
    const std::string narrow(path.begin(), path.end());  // test paths are ASCII
    if (dos_name) {
        if (wchar_t* mapped = dos_name(narrow.c_str())) {
            std::wstring result(mapped);
            HeapFree(GetProcessHeap(), 0, mapped);
            return result;
        }
    }
    std::wstring result = L"Z:" + path;
    for (wchar_t& c : result)
        if (c == L'/') c = L'\\';
    return result;
}

// The command line to start (the program as a Windows path, then its arguments as written),
// taking the temporary folder from the option before it.
std::wstring child_command(const wchar_t* own_line, std::wstring& temp_folder) {
    const wchar_t* word = skip_blanks(end_of_word(own_line));
    const wchar_t* end = end_of_word(word);
    if (unquoted(word, end) == L"--temp") {
        word = skip_blanks(end);
        end = end_of_word(word);
        temp_folder = windows_path(unquoted(word, end));
        word = skip_blanks(end);
        end = end_of_word(word);
    }
    if (word == end) return {};
    return L"\"" + windows_path(unquoted(word, end)) + L"\"" + end;
}

// Leaves the file named by QUILLER_LAUNCH_MARK, so the caller knows that Wine started the
// launcher at all (and may safely try again when it did not).
void mark_started() {
    wchar_t path[1024];
    const DWORD n = GetEnvironmentVariableW(L"QUILLER_LAUNCH_MARK", path, 1024);
    if (n == 0 || n >= 1024) return;
    const std::wstring file = windows_path(path);
    HANDLE h = CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (h != INVALID_HANDLE_VALUE) CloseHandle(h);
}

}  // namespace

int main() {
    mark_started();
    std::wstring temp_folder;
    std::wstring command = child_command(GetCommandLineW(), temp_folder);
    if (command.empty()) return 125;
    if (!temp_folder.empty()) {
        SetEnvironmentVariableW(L"TMP", temp_folder.c_str());
        SetEnvironmentVariableW(L"TEMP", temp_folder.c_str());
    }

    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &startup, &process))
        return 126;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 1;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(status);
}
