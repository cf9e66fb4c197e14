// INI files: the function `readini` and the statements `readinisection` and `writeini`. All name
// the file first.
#include "bindings/ini.hpp"

#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "expr/functions.hpp"
#include "os/ini_profile.hpp"

namespace quiller {
namespace {

// The run's INI files, parsed ones kept between statements.
ini::IniFiles& ini_files(Engine& e) {
    return e.run_state<ini::IniFiles>(*e.platform().files, *e.platform().clock);
}

}  // namespace

namespace functions {

// readini a1 file, a2 section, a3 key, a4 default.
std::string readini(const FunctionCall& c) {
    return ini_files(c.engine).read(std::string(c.arg(1)), c.arg(2), c.arg(3), c.arg(4));
}

}  // namespace functions

namespace statements {

namespace {

void set_variable(VariableTable& vars, const std::string& name, std::string_view value) {
    if (!vars.set(name, value)) throw failures::overflow();
}

}  // namespace

// `readinisection FILE SECTION`: the section's entries "name=value" into $readinisection[1]$
// onward and their count into $readinisection[0]$ (0 also when the file can't be opened).
void readinisection(Engine& e) {
    const std::string& file = e.slots()[1];
    VariableTable& vars = e.variables();
    const Result<std::string> bytes = e.platform().files->read_file(file);
    if (!bytes) {
        set_variable(vars, "readinisection[0]", "0");
        e.report_error("(ReadIniSection) Couldn't open '" + file + "'", Severity::Warning);
        return;
    }
    const std::vector<std::string> entries = ini::section_entries(*bytes, e.slots()[2]);
    for (std::size_t i = 0; i < entries.size(); ++i)
        set_variable(vars, "readinisection[" + std::to_string(i + 1) + "]", entries[i]);
    set_variable(vars, "readinisection[0]", std::to_string(entries.size()));
}

// `writeini FILE SECTION KEY VALUE`: sets KEY to VALUE in SECTION, creating the file, the
// section and the key as needed. An empty or missing VALUE writes an empty value. An empty KEY
// deletes the whole section; the option word "delete" deletes the key:
//     writeini "c:\app.ini" Options Colour {delete}
void writeini(Engine& e) {
    const Slots& s = e.slots();
    ini::ProfileEdit edit{ini::EditKind::SetValue, s[2], s[3], s[4]};
    if (s[3].empty())
        edit.kind = ini::EditKind::DeleteSection;
    else if (e.has_option("delete"))
        edit.kind = ini::EditKind::DeleteKey;
    ini::WriteFailure failure;
    if (ini_files(e).write(s[1], edit, kLineBreak, failure)) return;
    const std::string step = failure.reading ? "read" : "write";
    e.report_error("(WriteIni) Couldn't " + step + " '" + s[1] + "'", Severity::Warning,
                   failure.error.shown());
}

}  // namespace statements

}  // namespace quiller
