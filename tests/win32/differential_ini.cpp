// Quiller's INI reader and writer against the profile-string functions, on the same files.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <windows.h>

#include "differential.hpp"
#include "os/ini_profile.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::differential {
namespace {

namespace fs = std::filesystem;

bool write_bytes(const fs::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
    return static_cast<bool>(out);
}

std::string read_bytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string quoted(const std::string& s) {
    return "\"" + escape(s) + "\"";
}

std::string edit_text(const IniEdit& e) {
    if (e.key.empty()) return "delete [" + e.section + "]";
    if (!e.value) return "delete [" + e.section + "] " + e.key;
    return "[" + e.section + "] " + e.key + "=" + *e.value;
}

// The edit as the project's writer takes it; it points into `e`.
ini::ProfileEdit profile_edit(const IniEdit& e) {
    static const std::string kNone;
    ini::ProfileEdit p{ini::EditKind::SetValue, e.section, e.key, e.value ? *e.value : kNone};
    if (e.key.empty()) {
        p.kind = ini::EditKind::DeleteSection;
    } else if (!e.value) {
        p.kind = ini::EditKind::DeleteKey;
    }
    return p;
}

class IniComparison {
  public:
    IniComparison(fs::path dir, Report& report) : dir_(std::move(dir)), report_(report) {}

    void run(const IniCase& c, int number) {
        const std::string name = "file " + std::to_string(number);
        const fs::path path = dir_ / ("read-" + std::to_string(number) + ".ini");
        write_bytes(path, c.bytes);
        for (const IniQuery& q : c.queries) read(path, name, q, c.bytes);
        const std::string tag = std::to_string(number);
        series(c, c.bytes, tag, name + " edit ", false);
        series(c, wine_written(c.bytes, number), tag + "-wine", name + " as Wine writes it, edit ",
               true);
    }

  private:
    void read(const fs::path& path, const std::string& name, const IniQuery& q,
              const std::string& bytes) {
        const std::string ours = ini_.read(path.string(), q.section, q.key, q.fallback);
        const std::string system =
            system_profile_string(path.string(), q.section, q.key, q.fallback);
        report_.compare("ini-read", ours != system ? ini_read_class(bytes, q) : nullptr,
                        name + " [" + q.section + "] " + q.key + " (" + q.fallback + ")",
                        quoted(ours), quoted(system));
    }

    // The file as Wine writes it back after an edit that changes nothing in the end.
    std::string wine_written(const std::string& bytes, int number) {
        const fs::path path = dir_ / ("wine-" + std::to_string(number) + ".ini");
        write_bytes(path, bytes);
        system_write_profile(path.string(), "Quiller Scratch", "k", "v");
        system_write_profile(path.string(), "Quiller Scratch", "", std::nullopt);
        return read_bytes(path);
    }

    // The edits one after the other on two copies of `start`. A difference Wine's layout
    // explains is reported and the series goes on; after any other one it stops.
    void series(const IniCase& c, const std::string& start, const std::string& tag,
                const std::string& label, bool as_wine_writes) {
        const fs::path mine = dir_ / ("quiller-" + tag + ".ini");
        const fs::path theirs = dir_ / ("system-" + tag + ".ini");
        write_bytes(mine, start);
        write_bytes(theirs, start);
        std::string before = start;
        for (std::size_t i = 0; i < c.edits.size(); ++i) {
            const IniEdit& e = c.edits[i];
            ini::WriteFailure failure;
            ini_.write(mine.string(), profile_edit(e), "\r\n", failure);
            system_write_profile(theirs.string(), e.section, e.key, e.value);
            const std::string ours = read_bytes(mine), system = read_bytes(theirs);
            const char* difference = ini_write_class({before, e, ours, system}, as_wine_writes);
            report_.compare(as_wine_writes ? "ini-edit" : "ini-write", difference,
                            label + std::to_string(i + 1) + ": " + edit_text(e) + " on " + before,
                            quoted(ours), quoted(system));
            if (difference && std::string_view(difference) != "layout") return;
            before = ours;
        }
    }

    fs::path dir_;
    Report& report_;
    win32::Win32FileSystem files_;
    win32::Win32Clock clock_;
    ini::IniFiles ini_{files_, clock_};
};

}  // namespace

bool compare_ini(const std::vector<IniCase>& cases, const std::string& work_dir, Report& report) {
    const fs::path dir =
        fs::path(work_dir) / ("quiller-differential-" + std::to_string(GetCurrentProcessId()));
    std::error_code error;
    fs::create_directories(dir, error);
    if (error) return false;
    IniComparison comparison(dir, report);
    for (std::size_t i = 0; i < cases.size(); ++i)
        comparison.run(cases[i], static_cast<int>(i + 1));
    if (std::getenv("QUILLER_DIFFERENTIAL_KEEP")) {
        std::printf("INI files kept in %s\n", dir.string().c_str());
    } else {
        fs::remove_all(dir, error);
    }
    return true;
}

}  // namespace quiller::differential
