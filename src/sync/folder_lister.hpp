// Lists the folders of a walk, one helper thread working ahead of the walk: the walk announces
// the sub-folders it is about to enter, the helper lists them (with every entry's status) while
// the walk is busy elsewhere, and the walk takes each listing when it gets there, listing it
// itself when the helper has not begun it. The helper only reads the file system.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "os/directory_reader.hpp"

namespace quiller::sync {

class FolderLister {
  public:
    // Without `helper` every folder is listed by the caller of `take`, as it asks.
    FolderLister(DirectoryReader& reader, bool helper);
    ~FolderLister();
    FolderLister(const FolderLister&) = delete;
    FolderLister& operator=(const FolderLister&) = delete;

    // Folders (full paths) the walk will take in this order, after those announced before.
    void announce(const std::vector<std::string>& paths);
    // The entries of a folder: 0 or the reader's error code.
    int take(const std::string& path, std::vector<DirectoryEntry>& entries);

  private:
    enum class State { Queued, Helper, Walk, Done };
    struct Job {
        State state = State::Queued;
        int error = 0;
        std::vector<DirectoryEntry> entries;
    };
    // At most this many entries are held for the walk; the helper waits beyond it.
    static constexpr std::size_t kHeldLimit = 200000;

    void help();

    DirectoryReader& reader_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::unordered_map<std::string, Job> jobs_;
    std::vector<std::string> next_;  // the folder to list next on top
    std::size_t held_ = 0;
    bool stop_ = false;
    std::thread helper_;
};

}  // namespace quiller::sync
