#include "sync/walk.hpp"

#include <vector>

#include "sync/folder_lister.hpp"
#include "sync/local_days.hpp"

namespace quiller::sync {
namespace {

class Walk {
  public:
    Walk(const std::string& root, const WalkOptions& options, DirectoryReader& reader,
         const WalkEvents& events, Listing& listing)
        : root_(root),
          options_(options),
          reader_(reader),
          events_(events),
          listing_(listing),
          lister_(reader, options.helper && options.subfolders) {}

    // One folder (relative name, "" for the root) and everything below it.
    bool level(const std::string& relative, int& error) {
        std::vector<DirectoryEntry> entries;
        const std::string path = join_path(root_, relative);
        error = lister_.take(path, entries);
        if (error != 0) return false;

        std::vector<std::uint32_t> folders;
        const std::string prefix = relative.empty() ? relative : relative + kSeparator;
        for (const DirectoryEntry& e : entries) record(e, prefix, folders);
        entries = {};
        if (stopped_) return false;
        if (folders.empty()) return true;

        std::vector<std::string> names;
        names.reserve(folders.size());
        for (const std::uint32_t f : folders) names.emplace_back(listing_.name(f));
        std::vector<std::string> paths;
        for (const std::string& n : names) paths.push_back(join_path(root_, n));
        lister_.announce(paths);
        for (const std::string& n : names)
            if (!sub_folder(n)) return false;
        return true;
    }

  private:
    void record(const DirectoryEntry& e, const std::string& prefix,
                std::vector<std::uint32_t>& folders) {
        using Kind = DirectoryEntry::Kind;
        const bool folder = e.kind == Kind::Folder || e.kind == Kind::FolderLink;
        if (e.kind == Kind::Other) {
            events_.activity(options_.tag + " Warning : Skipped " +
                             join_path(root_, prefix + e.name) +
                             ", which is neither a file nor a folder.");
            return;
        }
        if (folder && !options_.subfolders) return;
        name_ = prefix;
        name_ += e.name;
        const double date = e.error == 0 ? days_.day_number(e.modified) : 0;
        const auto attributes = static_cast<std::int16_t>(e.attributes & ~kAttrCompressed & 0x7FFF);
        const std::uint32_t number = listing_.add(name_, date, attributes, folder ? 0 : e.size);
        if (e.error != 0)
            events_.activity(options_.tag + " Warning : Couldn't read all attributes of " +
                             join_path(root_, name_) + ". " + reader_.describe(e.error).shown());
        if (e.kind == Kind::Folder) folders.push_back(number);
        if (listing_.size() % 100 == 0 && events_.progress && !stopped_)
            stopped_ = !events_.progress(listing_.size(), prefix);
    }

    // A sub-folder is walked again after a passing failure; a lasting one is a warning.
    bool sub_folder(const std::string& relative) {
        const std::size_t before = listing_.size();
        for (int attempt = 1;; ++attempt) {
            int error = 0;
            if (level(relative, error)) return true;
            listing_.truncate(before);
            if (error == 0 || stopped_) return false;  // given up
            if (!reader_.transient(error)) {
                events_.activity(options_.tag + " Warning : Couldn't list " +
                                 join_path(root_, relative) + ". " +
                                 reader_.describe(error).shown());
                return true;
            }
            if (events_.retry_wait && !events_.retry_wait(attempt)) return false;
        }
    }

    const std::string& root_;
    const WalkOptions& options_;
    DirectoryReader& reader_;
    const WalkEvents& events_;
    Listing& listing_;
    FolderLister lister_;
    LocalDays days_;
    std::string name_;
    bool stopped_ = false;
};

}  // namespace

bool walk_tree(const std::string& root, const WalkOptions& options, DirectoryReader& reader,
               const WalkEvents& events, Listing& listing, int& error) {
    Walk walk(root, options, reader, events, listing);
    const std::size_t before = listing.size();
    error = 0;
    if (walk.level("", error)) return true;
    listing.truncate(before);
    return false;
}

}  // namespace quiller::sync
