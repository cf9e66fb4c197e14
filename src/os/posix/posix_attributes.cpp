// Attributes on POSIX: read-only is the owner's write bit; hidden, system, archive and
// compressed live in the extended attribute "user.DOSATTRIB" as the text "0x" + hex digits.
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "os/platform.hpp"
#include "os/posix/posix_dos_attributes.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller::posix {
namespace {

constexpr const char* kDosAttribute = "user.DOSATTRIB";
constexpr std::uint32_t kDosMask = kAttrHidden | kAttrSystem | kAttrArchive | kAttrCompressed;

// What the file shows without a kept word: archive for a regular file.
std::uint32_t default_bits(const struct stat& st) {
    return S_ISREG(st.st_mode) ? std::uint32_t{kAttrArchive} : 0;
}

// Writes the kept word. A file without its owner's write bit can't take extended attributes
// from its owner, so the bit is lent for the write.
bool write_dos(const std::string& p, const struct stat& st, std::uint32_t bits, int& error) {
    char text[16];
    const int n = std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned>(bits));
    if (::setxattr(p.c_str(), kDosAttribute, text, static_cast<std::size_t>(n), 0) == 0)
        return true;
    error = errno;
    if (error != EACCES || (st.st_mode & S_IWUSR) || ::chmod(p.c_str(), st.st_mode | S_IWUSR))
        return false;
    const bool ok = ::setxattr(p.c_str(), kDosAttribute, text, static_cast<std::size_t>(n), 0) == 0;
    if (!ok) error = errno;
    ::chmod(p.c_str(), st.st_mode & 07777);
    return ok;
}

bool unsupported(int error) {
    return error == ENOTSUP || error == EOPNOTSUPP || error == EPERM;
}

bool change_mode(const std::string& p, mode_t mode, mode_t old_mode, int& error) {
    if (mode == old_mode || ::chmod(p.c_str(), mode) == 0) return true;
    error = errno;
    return false;
}

}  // namespace

std::uint32_t dos_attribute_mask() {
    return kDosMask;
}

std::optional<std::uint32_t> read_dos_attributes(const std::string& native_path) {
    char value[32];
    const ssize_t n = ::getxattr(native_path.c_str(), kDosAttribute, value, sizeof value - 1);
    if (n < 3) return std::nullopt;  // none, unreadable, or a longer (binary) form
    value[n] = '\0';
    if (value[0] != '0' || (value[1] != 'x' && value[1] != 'X')) return std::nullopt;
    char* end = nullptr;
    const unsigned long bits = std::strtoul(value + 2, &end, 16);
    if (end == value + 2 || *end != '\0') return std::nullopt;
    return static_cast<std::uint32_t>(bits) & kDosMask;
}

std::uint32_t with_dos_attributes(const std::string& native_path, std::uint32_t attributes) {
    const auto kept = read_dos_attributes(native_path);
    if (!kept) return attributes;
    return (attributes & ~(kDosMask & ~kAttrHidden)) | *kept;
}

// Clearing read-only gives the owner write access back; setting it takes write access from
// everyone. The kept word is written while the owner can still write.
Result<AttributeOutcome> PosixFileSystem::set_attributes(const std::string& path,
                                                         std::uint32_t set, std::uint32_t clear) {
    const std::string p = native_path(path);
    struct stat st {};
    if (::stat(p.c_str(), &st) != 0) return system_error(errno);
    int error = 0;
    mode_t mode = st.st_mode & 07777;
    if ((clear & kAttrReadOnly) && !change_mode(p, mode | S_IWUSR, mode, error))
        return system_error(error);
    if (clear & kAttrReadOnly) mode |= S_IWUSR;
    st.st_mode = (st.st_mode & ~07777) | mode;
    AttributeOutcome outcome;
    if ((set | clear) & kDosMask) {
        const std::uint32_t now = read_dos_attributes(p).value_or(default_bits(st));
        if (!write_dos(p, st, ((now & ~clear) | set) & kDosMask, error)) {
            if (!unsupported(error)) return system_error(error);
            outcome = {AttributeResult::NotKept, system_error(error)};
        }
    }
    if ((set & kAttrReadOnly) && !change_mode(p, mode & ~0222, mode, error))
        return system_error(error);
    return outcome;
}

}  // namespace quiller::posix
