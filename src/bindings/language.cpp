// The language's three tables, one row per statement, built-in function and condition test, in
// alphabetical order. A new statement or function is one row here and its handler in the file
// of its domain. Rows of a later release have no handler yet: they answer "is not available
// yet". Every statement also reads the option word "quiet", which is not listed.
#include "bindings/language.hpp"

#include "bindings/adjustmaster.hpp"
#include "bindings/dates_numbers.hpp"
#include "bindings/dircopy.hpp"
#include "bindings/file_operations.hpp"
#include "bindings/files.hpp"
#include "bindings/ini.hpp"
#include "bindings/network.hpp"
#include "bindings/output.hpp"
#include "bindings/processes.hpp"
#include "bindings/questions.hpp"
#include "bindings/registry.hpp"
#include "bindings/sync.hpp"
#include "bindings/system.hpp"
#include "bindings/text.hpp"
#include "engine/statements.hpp"
#include "expr/condition.hpp"

namespace quiller {
namespace {

using namespace statements;
using D = Domain;

// clang-format off
constexpr StatementRow kStatements[] = {
    // keyword          options read                     handler         domain              traits
    {"addprinter",      "",                              addprinter,     D::Network},
    {"call",            "",                              call,           D::ControlFlow},
    {"copy",            "animated",                      copy,           D::FileOperations},
    {"debug",           "",                              debug,          D::Engine},
    {"del",             "",                              del,            D::FileOperations},
    {"delregkey",       "",                              delregkey,      D::Registry},
    {"delregvalue",     "",                              delregvalue,    D::Registry},
    {"dir",             "sub dirsonly",                  dir,            D::FileOperations},
    {"dircopy",         "hidemeter ask progress nosub preview", dircopy, D::Sync},
    {"dirscan",         "progress nosub",                dirscan,        D::Sync},
    {"else",            "",                              else_,          D::ControlFlow,     kElse | kOutdentBefore | kIndentAfter},
    {"end",             "",                              end,            D::ControlFlow},
    {"endif",           "",                              nothing,        D::ControlFlow,     kClosesIf | kOutdentBefore},
    {"endsub",          "",                              endsub,         D::ControlFlow,     kOutdentBefore},
    {"endwhile",        "",                              endwhile,       D::ControlFlow,     kClosesWhile | kOutdentBefore},
    {"environment",     "",                              environment,    D::System},
    {"errorshow",       "",                              errorshow,      D::Engine},
    {"exclude",         "reset include",                 exclude,        D::Sync},
    {"fileclose",       "",                              fileclose,      D::Files},
    {"filewrite",       "",                              filewrite,      D::Files},
    {"goto",            "",                              goto_,          D::ControlFlow},
    {"if",              "",                              if_,            D::ControlFlow,     kOpensIf | kCondition | kIndentAfter},
    {"ifnot",           "",                              ifnot,          D::ControlFlow,     kOpensIf},
    {"label",           "",                              nothing,        D::ControlFlow,     kLabel},
    {"load",            "",                              load,           D::ControlFlow},
    {"loadreg",         "",                              loadreg,        D::Registry},
    {"md",              "",                              md,             D::FileOperations,  kQuietHidesErrors},
    {"pause",           "",                              pause,          D::Output},
    {"popup",           "cancel",                        popup,          D::Sync},
    {"print",           "clear insert",                  print,          D::Output},
    {"printtofile",     "",                              printtofile,    D::Output},
    {"printwindow",     "",                              printwindow,    D::Output},
    {"rd",              "severe",                        rd,             D::FileOperations},
    {"readinisection",  "",                              readinisection, D::Ini},
    {"rename",          "",                              rename,         D::FileOperations},
    {"repeat",          "",                              nothing,        D::ControlFlow,     kOpensRepeat | kIndentAfter},
    {"sendkeys",        "",                              sendkeys,       D::Network},
    {"set",             "",                              set,            D::Engine,          kAssignment},
    {"setattrib",       "",                              setattrib,      D::FileOperations},
    {"shell",           "wait minimized maxmized hidden", shell,         D::Processes},
    {"shutdown",        "",                              shutdown,       D::Processes},
    {"sub",             "",                              nothing,        D::ControlFlow,     kSub | kIndentAfter},
    {"until",           "",                              until,          D::ControlFlow,     kClosesRepeat | kCondition | kOutdentBefore},
    {"web",             "",                              web,            D::Processes},
    {"while",           "",                              while_,         D::ControlFlow,     kOpensWhile | kCondition | kIndentAfter},
    {"writeini",        "delete",                        writeini,       D::Ini},
    {"writereg",        "",                              writereg,       D::Registry},
};

constexpr FunctionRow kFunctions[] = {
    // name                  arity  handler
    {"adjustmaster",         5,     functions::adjustmaster},
    {"asc",                  1,     functions::asc},
    {"ask",                  2,     functions::ask},
    {"askyesno",             2,     functions::askyesno},
    {"chr",                  1,     functions::chr},
    {"connectedhow",         1,     functions::connectedhow},
    {"connectedto",          1,     functions::connectedto},
    {"date",                 1,     functions::date},
    {"decode",               2,     functions::decode},
    {"dirsize",              2,     functions::dirsize},
    {"diskspace",            1,     functions::diskspace},
    {"encode",               2,     functions::encode},
    {"enumregkeys",          1,     functions::enumregkeys},
    {"enumregvalues",        1,     functions::enumregvalues},
    {"filedate",             2,     functions::filedate},
    {"fileopen",             2,     functions::fileopen},
    {"fileread",             1,     functions::fileread},
    {"filesize",             1,     functions::filesize},
    {"find",                 4,     functions::find},
    {"findrev",              2,     functions::findrev},
    {"getattrib",            1,     functions::getattrib},
    {"getmemavail",          0,     functions::getmemavail},
    {"getmemtotal",          0,     functions::getmemtotal},
    {"getnetcomputerdomain", 0,     functions::getnetcomputerdomain},
    {"getnetcomputername",   0,     functions::getnetcomputername},
    {"getnetdc",             1,     functions::getnetdc},
    {"getnethostname",       0,     functions::getnethostname},
    {"getnetipaddress",      0,     functions::getnetipaddress},
    {"getnetuserdomain",     0,     functions::getnetuserdomain},
    {"getnetusername",       0,     functions::getnetusername},
    {"gettempdir",           0,     functions::gettempdir},
    {"gettempfile",          1,     functions::gettempfile},
    {"lcase",                1,     functions::lcase},
    {"len",                  1,     functions::len},
    {"mid",                  3,     functions::mid},
    {"netuse",               4,     functions::netuse},
    {"netusedel",            1,     functions::netusedel},
    {"password",             2,     functions::ask},
    {"random",               1,     functions::random},
    {"readini",              4,     functions::readini},
    {"readreg",              2,     functions::readreg},
    {"regvaluetype",         2,     functions::regvaluetype},
    {"replacestring",        3,     functions::replacestring},
    {"replacestringinfile",  3,     functions::replacestringinfile},
    {"time",                 1,     functions::time},
    {"trim",                 1,     functions::trim},
    {"ucase",                1,     functions::ucase},
    {"word",                 3,     functions::word},
};

constexpr ConditionTestRow kConditionTests[] = {
    // name                 handler: operands A and B
    {"direxists",           conditions::direxists},
    {"equal",               conditions::equal},
    {"fileexists",          conditions::fileexists},
    {"filesame",            conditions::filesame},
    {"greaterthan",         conditions::greaterthan},
    {"greaterthanorequal",  conditions::greaterthanorequal},
    {"isingroup",           conditions::isingroup},
    {"lessthan",            conditions::lessthan},
    {"lessthanorequal",     conditions::lessthanorequal},
    {"notequal",            conditions::notequal},
    {"regkeyexists",        conditions::regkeyexists},
    {"regvalueexists",      conditions::regvalueexists},
};
// clang-format on

}  // namespace

const Language& standard_language() {
    static const Language language(kStatements, kFunctions, kConditionTests);
    return language;
}

}  // namespace quiller
