// The statement table: every keyword the interpreter knows, the option words it reads and the
// handler that runs it. Keywords are resolved to table rows once, when a line is loaded.
#pragma once

#include <span>
#include <string_view>

namespace quiller {

class Engine;

struct StatementDef {
    std::string_view keyword;
    std::string_view options;  // the option words the statement reads, for the reference
    void (*run)(Engine&);
};

std::span<const StatementDef> statement_table();

// The row of a keyword (lower case), or -1.
int find_statement(std::string_view keyword);

// Handlers, grouped by file.
namespace statements {
// control_flow.cpp
void if_(Engine&);
void ifnot(Engine&);
void else_(Engine&);
void nothing(Engine&);
void while_(Engine&);
void endwhile(Engine&);
void until(Engine&);
void goto_(Engine&);
void call(Engine&);
void endsub(Engine&);
void end(Engine&);
void load(Engine&);
// engine_statements.cpp
void set(Engine&);
void debug(Engine&);
void errorshow(Engine&);
void not_available(Engine&);
// bindings/system.cpp
void environment(Engine&);
// bindings/files.cpp
void filewrite(Engine&);
void fileclose(Engine&);
// bindings/ini.cpp
void readinisection(Engine&);
void writeini(Engine&);
// bindings/output.cpp
void print(Engine&);
void printtofile(Engine&);
void printwindow(Engine&);
void pause(Engine&);
// bindings/registry.cpp
void writereg(Engine&);
void delregkey(Engine&);
void delregvalue(Engine&);
void loadreg(Engine&);
// bindings/processes.cpp
void shell(Engine&);
void web(Engine&);
void shutdown(Engine&);
// bindings/file_operations.cpp
void copy(Engine&);
void del(Engine&);
void dir(Engine&);
void md(Engine&);
void rd(Engine&);
void rename(Engine&);
void setattrib(Engine&);
// bindings/network.cpp
void addprinter(Engine&);
void sendkeys(Engine&);
}  // namespace statements

}  // namespace quiller
