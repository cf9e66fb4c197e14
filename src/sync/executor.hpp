// Carries out an action list on the target tree, in the list's order. Copies are written to a
// temporary name in the target folder and renamed over the real name, so a real name always
// holds a whole file; a run that is killed leaves at most temporaries, which the next run
// removes. A failed action is reported and the run goes on; the source is only ever read.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "os/file_system.hpp"
#include "sync/actions.hpp"
#include "sync/listing.hpp"
#include "sync/walk.hpp"

namespace quiller::sync {

// The temporaries of copies under way: "." + "~qlsync-" + hex digits + ".tmp".
bool is_temporary_name(std::string_view last_component);

class ExecutionObserver {
  public:
    virtual ~ExecutionObserver() = default;
    // An action ended: done, or the error that kept it from being done.
    virtual void action_ended(const Action& action, std::string_view path,
                              const Status& outcome) = 0;
    // Between two actions (`done` of them ended); the only place a run may be stopped.
    virtual void between_actions(std::int64_t done, std::string_view path) = 0;
};

struct ExecutionCounts {
    std::array<std::int64_t, kActionKinds> done{};
    std::int64_t failed = 0;
    std::int64_t skipped = 0;  // deletions left out
    std::int64_t bytes = 0;    // copied
};

class Executor {
  public:
    Executor(const MergeSide& source, const MergeSide& target, FileSystem& files,
             ExecutionObserver& observer);

    // Runs the actions; without `deletions`, "del" and "rd" are skipped.
    void run(const ActionList& list, bool deletions);

    const ExecutionCounts& counts() const { return counts_; }
    // The target's listing as the run left it (sorted): what a rescan would find.
    Listing target_after(const ActionList& list) const;
    // The full path of an action on the target (its new name for a copy or a folder made).
    std::string target_path(const Action& action) const;
    // The target path, and for a rename the new name: "dst/docs -> Docs".
    std::string describe(const Action& action, const std::string& path) const;

    // The single steps, for callers with a plan of their own.
    // A copy goes through a temporary beside `to`; read-only targets are made writable.
    Status copy(const std::string& from, const std::string& to);
    Status remove_file(const std::string& path);
    Status remove_directory(const std::string& path);
    Status make_directory(const std::string& path);

  private:
    Status execute(const Action& a, const std::string& path);
    Status rename(const Action& a, const std::string& path);
    Status attrib(const Action& a, const std::string& path);
    // True when `path` was read-only and has been made writable.
    bool made_writable(const std::string& path);
    // A name as it now stands in the target, after the folders renamed so far.
    std::string on_disk(std::string_view name) const;

    const Listing& source_;
    const Listing& target_;
    std::string source_root_;
    std::string target_root_;
    FileSystem& files_;
    ExecutionObserver& observer_;
    ExecutionCounts counts_;
    std::vector<char> ended_ok_;                            // per action
    std::unordered_map<std::string, std::string> renamed_;  // folder name -> name on disk
};

}  // namespace quiller::sync
