#include "sync/name_order.hpp"

#include "sync/name_order_platform.hpp"
#include "value/text.hpp"

namespace quiller::sync {
namespace {

bool is_ascii(std::string_view s) {
    for (const char c : s)
        if (static_cast<unsigned char>(c) >= 0x80) return false;
    return true;
}

// Printable ASCII (blank to "~"): every such character has a collation weight of its own apart
// from the two cases of a letter, so the collation key alone decides equality.
bool is_printable_ascii(std::string_view s) {
    for (const char c : s)
        if (c < 0x20 || c > 0x7E) return false;
    return true;
}

void append_fold(std::string_view name, std::string& out) {
    if (!is_ascii(name)) return platform::append_folded(name, out);
    for (const char c : name) out += text::ascii_lower_char(c);
}

}  // namespace

std::string fold_name(std::string_view name) {
    std::string folded;
    append_fold(name, folded);
    return folded;
}

// The key is the collation key of the folded name; unless the folded name is printable ASCII, a
// zero byte and the folded name follow, so that names the collation holds equal (ignorable
// characters, canonically equivalent forms) stay apart unless they are equal ignoring case.
void append_name_key(std::string_view name, std::string& key) {
    thread_local std::string folded;
    folded.clear();
    append_fold(name, folded);
    platform::append_collation_key(folded, key);
    if (is_printable_ascii(folded)) return;
    key += '\0';
    key += folded;
}

int compare_names(std::string_view a, std::string_view b) {
    return name_key(a).compare(name_key(b));
}

}  // namespace quiller::sync
