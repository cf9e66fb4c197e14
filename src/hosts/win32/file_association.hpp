// The per-user association of ".prg" files with quiller.exe, under the present user's
// Software\Classes key; the machine-wide keys are never touched.
#pragma once

#include <string>

namespace quiller::win32 {

inline constexpr wchar_t kProgId[] = L"Quiller.Script";

// Makes ".prg" files open with `exe` ("Open" runs the script, "Edit" opens it in Notepad).
// 0 or the registry's error code.
long register_prg_association(const std::wstring& exe);
// Removes what `register_prg_association` wrote; ".prg" is left alone when another program
// has taken it over since.
long unregister_prg_association();

}  // namespace quiller::win32
