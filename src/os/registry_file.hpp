// Registry export files (".reg"), as the registry editor writes them: "REGEDIT4" files in the
// ANSI code page and "Windows Registry Editor Version 5.00" files in UTF-16LE.
//
//     Windows Registry Editor Version 5.00
//     ; a comment
//     [HKEY_CURRENT_USER\Software\Corvale]       a key (created)
//     [-HKEY_CURRENT_USER\Software\Old]          a key deleted with its subkeys
//     @="default value"                          the key's default value
//     "Path"="C:\\Tools"                         REG_SZ; \\ is one backslash, \" a quote
//     "Count"=dword:0000000a                     REG_DWORD
//     "Blob"=hex:01,ab,\                         REG_BINARY; a trailing \ joins the next line
//       ff
//     "Home"=hex(2):25,00,00,00                  REG_EXPAND_SZ; hex(7): REG_MULTI_SZ,
//                                                hex(b): REG_QWORD, hex(N): type N
//     "Gone"=-                                   a value deleted
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "os/registry_store.hpp"

namespace quiller {

struct RegistryFileEntry {
    enum class Kind { Key, DeleteKey, Value, DeleteValue };
    Kind kind = Kind::Key;
    int line = 0;       // where the entry starts (1-based)
    std::string key;    // Key, DeleteKey: the key path
    std::string name;   // Value, DeleteValue: the value name ("" is the default value)
    RegistryData data;  // Value
};

struct RegistryFileHandlers {
    std::function<void(const RegistryFileEntry&)> entry;
    // A line that can't be read: its number and what is wrong with it.
    std::function<void(int line, std::string_view problem)> problem;
};

// The file's text as UTF-8: UTF-16 (by its byte-order mark, or NULs in the first characters)
// converted, a UTF-8 byte-order mark dropped, other text read as UTF-8 or else Windows-1252.
// `utf16` tells whether the file was UTF-16.
std::string registry_file_text(std::string_view bytes, bool& utf16);

// Reads a whole file, handing each entry and each bad line over in file order. Never fails:
// a bad line is reported and skipped.
void read_registry_file(std::string_view bytes, const RegistryFileHandlers& handlers);

}  // namespace quiller
