// The order of names in directory synchronisation: ascending by the case-blind collation of the
// names (ICU's language-neutral collation on POSIX, the Win32 NLS sort keys on Windows), where two
// names count as equal only when they are equal ignoring case. The sort of a listing and the merge
// of two listings both go through this one order.
//
// Names are compared through precomputed keys: the keys of two names compare as bytes
// (std::string_view's operator<) exactly as the names do, and are equal exactly when the names
// are equal ignoring case (simple case folding, per character, as file systems match names).
#pragma once

#include <string>
#include <string_view>

namespace quiller::sync {

// Appends the sort key of `name` (UTF-8; ill-formed bytes are kept and compared as bytes).
void append_name_key(std::string_view name, std::string& key);

inline std::string name_key(std::string_view name) {
    std::string key;
    append_name_key(name, key);
    return key;
}

// Less than 0, 0 or greater than 0 as `a` sorts before, with or after `b`.
int compare_names(std::string_view a, std::string_view b);

// The name with every character simply case-folded; two names are equal ignoring case exactly
// when their folded forms are the same bytes.
std::string fold_name(std::string_view name);

}  // namespace quiller::sync
