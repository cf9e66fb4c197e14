#include "sync/executor.hpp"

#include <algorithm>
#include <random>

#include "os/file_operation_paths.hpp"
#include "os/platform.hpp"
#include "sync/sort.hpp"

namespace quiller::sync {
namespace {

constexpr std::string_view kTemporaryPrefix = ".~qlsync-";
constexpr std::string_view kTemporarySuffix = ".tmp";
constexpr std::uint32_t kKeptAttributes = kAttrReadOnly | kAttrHidden | kAttrSystem | kAttrArchive;

std::size_t last_separator(std::string_view path) {
#ifdef _WIN32
    return path.find_last_of("\\/");
#else
    return path.rfind('/');
#endif
}

std::string_view parent_of(std::string_view name) {
    const std::size_t cut = last_separator(name);
    return cut == std::string_view::npos ? std::string_view{} : name.substr(0, cut);
}

// A fresh temporary name in the folder of `path`.
std::string temporary_beside(std::string_view path) {
    static std::mt19937_64 random{std::random_device{}()};
    static const char digits[] = "0123456789abcdef";
    std::string name(kTemporaryPrefix);
    for (std::uint64_t bits = random(), k = 0; k < 12; ++k, bits >>= 4) name += digits[bits & 15];
    name += kTemporarySuffix;
    const std::size_t cut = last_separator(path);
    return cut == std::string_view::npos ? name : std::string(path.substr(0, cut + 1)) + name;
}

// A name below a root, written with the root's own separator ("./dst" keeps "/" on Windows).
std::string in_tree(std::string_view root, std::string_view name) {
    std::string path = join_path(root, name);
    const char separator = fileops::separator_of(root);
    if (separator != kSeparator)
        std::replace(path.begin() + static_cast<std::ptrdiff_t>(root.size()), path.end(),
                     kSeparator, separator);
    return path;
}

bool is_deletion(ActionKind kind) {
    return kind == ActionKind::Del || kind == ActionKind::Rd;
}

}  // namespace

bool is_temporary_name(std::string_view last) {
    return last.size() > kTemporaryPrefix.size() + kTemporarySuffix.size() &&
           last.starts_with(kTemporaryPrefix) && last.ends_with(kTemporarySuffix);
}

Executor::Executor(const MergeSide& source, const MergeSide& target, FileSystem& files,
                   ExecutionObserver& observer)
    : source_(source.listing),
      target_(target.listing),
      source_root_(source.root),
      target_root_(target.root),
      files_(files),
      observer_(observer) {}

void Executor::run(const ActionList& list, bool deletions) {
    ended_ok_.assign(list.actions.size(), 0);
    std::int64_t ended = 0;
    for (std::size_t k = 0; k < list.actions.size(); ++k) {
        const Action& a = list.actions[k];
        if (a.kind == ActionKind::Reset) continue;
        const std::string path = target_path(a);
        if (!deletions && is_deletion(a.kind)) {
            ++counts_.skipped;
        } else {
            const Status outcome = execute(a, path);
            if (outcome) {
                ended_ok_[k] = 1;
                ++counts_.done[static_cast<int>(a.kind)];
            } else {
                ++counts_.failed;
            }
            observer_.action_ended(a, describe(a, path), outcome);
        }
        observer_.between_actions(++ended, path);
    }
}

std::string Executor::target_path(const Action& a) const {
    const bool from_source = a.kind == ActionKind::Copy || a.kind == ActionKind::Md;
    return in_tree(target_root_,
                   on_disk(from_source ? source_.name(a.source) : target_.name(a.target)));
}

std::string Executor::describe(const Action& a, const std::string& path) const {
    if (a.kind != ActionKind::Rename && a.kind != ActionKind::Rendir) return path;
    return path + " -> " + std::string(last_component(source_.name(a.source)));
}

std::string Executor::on_disk(std::string_view name) const {
    if (renamed_.empty()) return std::string(name);
    for (std::size_t cut = name.size();;) {
        const auto it = renamed_.find(std::string(name.substr(0, cut)));
        if (it != renamed_.end()) return it->second + std::string(name.substr(cut));
        cut = name.substr(0, cut).rfind(kSeparator);
        if (cut == std::string_view::npos) return std::string(name);
    }
}

Status Executor::execute(const Action& a, const std::string& path) {
    switch (a.kind) {
        case ActionKind::Copy:
        case ActionKind::Replace: {
            Status s = copy(in_tree(source_root_, source_.name(a.source)), path);
            if (s) counts_.bytes += source_.record(a.source).size;
            return s;
        }
        case ActionKind::Del:
            return remove_file(path);
        case ActionKind::Md:
            return make_directory(path);
        case ActionKind::Rd:
            return remove_directory(path);
        case ActionKind::Rename:
        case ActionKind::Rendir:
            return rename(a, path);
        case ActionKind::Attrib:
            return attrib(a, path);
        case ActionKind::Reset:
            return {};
    }
    return {};
}

// Into a temporary beside the target, then over the target's name in one step. No flush per
// file: a run that is killed leaves only a temporary, and the next run copies again.
Status Executor::copy(const std::string& from, const std::string& to) {
    CopyControl mirror;
    mirror.flush = false;
    mirror.replace_name = true;
    mirror.temp_name = [](const std::string& target) { return temporary_beside(target); };
    const Status s = files_.copy_file(from, to, mirror);
    if (s || !made_writable(to)) return s;
    return files_.copy_file(from, to, mirror);
}

Status Executor::make_directory(const std::string& path) {
    const Status made = files_.make_directory(path);
    if (made) return made;
    const Result<FileEntry> e = files_.entry(path);
    if (!e) return e.status();
    return e->directory ? Status() : made;
}

Status Executor::remove_file(const std::string& path) {
    const Status s = files_.remove_file(path);
    if (s || s.error().kind == ErrorKind::NotFound) return {};
    if (!made_writable(path)) return s;
    return files_.remove_file(path);
}

// A folder already gone counts as removed: the second removal of a folder that gave way to a
// file finds nothing to do.
Status Executor::remove_directory(const std::string& path) {
    const Status s = files_.remove_directory(path);
    if (s || s.error().kind == ErrorKind::NotFound) return {};
    return s;
}

// The target is made writable when it was read-only (the mirror owns its files), and the step
// retried; otherwise the first error stands.
bool Executor::made_writable(const std::string& path) {
    const Result<FileEntry> entry = files_.entry(path);
    if (!entry || !(entry->attributes & kAttrReadOnly)) return false;
    return files_.set_attributes(path, 0, kAttrReadOnly).ok();
}

// A new spelling through a temporary name, so file systems that ignore case take it too; never
// over another entry.
Status Executor::rename(const Action& a, const std::string& path) {
    const std::string_view old_name = target_.name(a.target);
    const std::string_view new_last = last_component(source_.name(a.source));
    const std::string old_disk = on_disk(old_name);
    const std::string_view folder = parent_of(old_disk);
    const std::string new_disk = folder.empty()
                                     ? std::string(new_last)
                                     : std::string(folder) + kSeparator + std::string(new_last);
    const std::string temp = temporary_beside(path);
    if (Status s = files_.rename(path, temp); !s) return s;
    if (Status s = files_.rename(temp, in_tree(target_root_, new_disk)); !s) {
        files_.rename(temp, path);
        if (a.kind == ActionKind::Rendir) renamed_[std::string(source_.name(a.source))] = old_disk;
        return s;
    }
    renamed_[std::string(old_name)] = new_disk;
    if (a.kind == ActionKind::Rendir) renamed_[std::string(source_.name(a.source))] = new_disk;
    return {};
}

Status Executor::attrib(const Action& a, const std::string& path) {
    const std::uint32_t wanted =
        static_cast<std::uint16_t>(source_.record(a.source).attributes) & kKeptAttributes;
    return files_.set_attributes(path, wanted, ~wanted & kKeptAttributes).status();
}

Listing Executor::target_after(const ActionList& list) const {
    std::vector<char> gone(target_.size(), 0);
    std::vector<std::int32_t> replaced_by(target_.size(), -1);
    std::vector<std::int32_t> added;
    for (std::size_t k = 0; k < list.actions.size(); ++k) {
        if (k >= ended_ok_.size() || !ended_ok_[k]) continue;
        const Action& a = list.actions[k];
        switch (a.kind) {
            case ActionKind::Del:
            case ActionKind::Rd:
                gone[a.target] = 1;
                break;
            case ActionKind::Copy:
            case ActionKind::Md:
                added.push_back(a.source);
                break;
            case ActionKind::Replace:
            case ActionKind::Attrib:
                replaced_by[a.target] = a.source;
                break;
            default:
                break;
        }
    }
    Listing after;
    after.root = target_.root;
    after.subfolders = target_.subfolders;
    for (const std::uint32_t t : target_.order) {
        if (gone[t]) continue;
        const ScanRecord& r = target_.record(t);
        const std::string name = on_disk(target_.name(t));
        if (replaced_by[t] < 0) {
            after.add(name, r.date, r.attributes, r.size);
        } else {
            const ScanRecord& s = source_.record(replaced_by[t]);
            after.add(name, s.date, s.attributes, s.size);
        }
    }
    for (const std::int32_t s : added) {
        const ScanRecord& r = source_.record(s);
        after.add(on_disk(source_.name(s)), r.date, r.attributes, r.size);
    }
    sort_listing(after);
    return after;
}

}  // namespace quiller::sync
