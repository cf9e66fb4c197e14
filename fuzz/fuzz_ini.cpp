// The INI writer and reader: after an edit, the readers find what was written. Line 1 is the
// section, line 2 the key, line 3 the value, the rest the file's bytes.
#include "fuzz_input.hpp"
#include "os/ini_profile.hpp"

using namespace quiller;

namespace {

// Names and values the round trip must keep exactly: printable, no characters the file format
// gives a meaning, no blanks at either end.
bool plain(std::string_view s, std::string_view special) {
    if (s.empty() || s.size() > 100 || s.front() == ' ' || s.back() == ' ') return false;
    for (const char c : s)
        if (c < 0x21 || c > 0x7e || special.find(c) != std::string_view::npos) return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input in(data, size);
    const std::string_view section = in.line();
    const std::string_view key = in.line();
    const std::string_view value = in.line();
    const std::string_view bytes = in.rest();

    (void)ini::section_entries(bytes, section);
    (void)ini::line_reader_value(ini::index_lines(bytes), section, key);
    const std::string written =
        ini::apply_edit(bytes, {ini::EditKind::SetValue, section, key, value}, "\r\n");
    const ini::Profile profile = ini::parse_profile(written);
    const std::string read = ini::profile_string(profile, section, key, "\x01");
    if (plain(section, "[];=\"'") && plain(key, "[];=\"'") && plain(value, "\"'") && read != value)
        fuzz::fail("a written value is not read back");
    (void)ini::apply_edit(written, {ini::EditKind::DeleteKey, section, key, {}}, "\n");
    (void)ini::apply_edit(written, {ini::EditKind::DeleteSection, section, {}, {}}, "\n");
    return 0;
}
