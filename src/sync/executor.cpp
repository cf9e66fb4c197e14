#include "sync/executor.hpp"

#include <algorithm>
#include <cerrno>
#include <random>

#include "os/file_operation_paths.hpp"
#include "os/platform.hpp"
#include "sync/sort.hpp"

namespace quiller::sync {
namespace {

#ifdef _WIN32
constexpr int kExists = 80;  // ERROR_FILE_EXISTS
#else
constexpr int kExists = EEXIST;
#endif

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

Executor::Executor(const MergeSide& source, const MergeSide& target, FileOperations& ops,
                   MirrorFiles& files, ExecutionObserver& observer)
    : source_(source.listing),
      target_(target.listing),
      source_root_(source.root),
      target_root_(target.root),
      ops_(ops),
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
            const int error = execute(a, path);
            if (error == 0) {
                ended_ok_[k] = 1;
                ++counts_.done[static_cast<int>(a.kind)];
            } else {
                ++counts_.failed;
            }
            observer_.action_ended(a, describe(a, path), error);
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

int Executor::execute(const Action& a, const std::string& path) {
    int error = 0;
    switch (a.kind) {
        case ActionKind::Copy:
        case ActionKind::Replace:
            error = copy(in_tree(source_root_, source_.name(a.source)), path);
            if (!error) counts_.bytes += source_.record(a.source).size;
            return error;
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
            return 0;
    }
    return 0;
}

// Into a temporary beside the target, then over the target's name in one step.
int Executor::copy(const std::string& from, const std::string& to) {
    int error = 0;
    std::string temp;
    for (int attempt = 0; attempt < 10; ++attempt) {
        temp = temporary_beside(to);
        error = 0;
        if (files_.copy_new(from, temp, error)) break;
        if (error != kExists) return error;
    }
    if (error) return error;
    if (files_.replace(temp, to, error)) return 0;
    error = with_write_access(to, error, nullptr);
    if (error == 0 && files_.replace(temp, to, error)) return 0;
    int ignored = 0;
    ops_.remove_file(temp, ignored);
    return error;
}

int Executor::make_directory(const std::string& path) {
    int error = 0;
    if (ops_.make_directory(path, error)) return 0;
    if (const auto e = ops_.entry(path, error); e && e->directory) return 0;
    return error ? error : kExists;
}

int Executor::remove_file(const std::string& path) {
    int error = 0;
    if (ops_.remove_file(path, error) || ops_.not_found(error)) return 0;
    return with_write_access(path, error, &FileOperations::remove_file);
}

// A folder already gone counts as removed: the second removal of a folder that gave way to a
// file finds nothing to do.
int Executor::remove_directory(const std::string& path) {
    int error = 0;
    if (ops_.remove_directory(path, error) || ops_.not_found(error)) return 0;
    return error;
}

// The target is made writable when it was read-only (the mirror owns its files), and the step
// retried; otherwise the first error stands.
int Executor::with_write_access(const std::string& path, int error,
                                bool (FileOperations::*retry)(const std::string&, int&)) {
    int ignored = 0;
    const auto entry = ops_.entry(path, ignored);
    if (!entry || !(entry->attributes & kAttrReadOnly)) return error;
    if (ops_.set_attributes(path, 0, kAttrReadOnly, ignored) == AttributeResult::Failed)
        return error;
    if (!retry) return 0;
    int again = 0;
    return (ops_.*retry)(path, again) ? 0 : again;
}

// A new spelling through a temporary name, so file systems that ignore case take it too; never
// over another entry.
int Executor::rename(const Action& a, const std::string& path) {
    const std::string_view old_name = target_.name(a.target);
    const std::string_view new_last = last_component(source_.name(a.source));
    const std::string old_disk = on_disk(old_name);
    const std::string_view folder = parent_of(old_disk);
    const std::string new_disk = folder.empty()
                                     ? std::string(new_last)
                                     : std::string(folder) + kSeparator + std::string(new_last);
    const std::string temp = temporary_beside(path);
    int error = 0;
    if (!ops_.rename(path, temp, error)) return error;
    if (!ops_.rename(temp, in_tree(target_root_, new_disk), error)) {
        int ignored = 0;
        ops_.rename(temp, path, ignored);
        if (a.kind == ActionKind::Rendir) renamed_[std::string(source_.name(a.source))] = old_disk;
        return error;
    }
    renamed_[std::string(old_name)] = new_disk;
    if (a.kind == ActionKind::Rendir) renamed_[std::string(source_.name(a.source))] = new_disk;
    return 0;
}

int Executor::attrib(const Action& a, const std::string& path) {
    const std::uint32_t wanted =
        static_cast<std::uint16_t>(source_.record(a.source).attributes) & kKeptAttributes;
    int error = 0;
    const AttributeResult r = ops_.set_attributes(path, wanted, ~wanted & kKeptAttributes, error);
    return r == AttributeResult::Failed ? error : 0;
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
