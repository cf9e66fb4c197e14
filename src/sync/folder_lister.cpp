#include "sync/folder_lister.hpp"

namespace quiller::sync {

FolderLister::FolderLister(DirectoryReader& reader, bool helper) : reader_(reader) {
    if (helper && std::thread::hardware_concurrency() > 1)
        helper_ = std::thread([this] { help(); });
}

FolderLister::~FolderLister() {
    {
        std::lock_guard lock(mutex_);
        stop_ = true;
    }
    changed_.notify_all();
    if (helper_.joinable()) helper_.join();
}

void FolderLister::announce(const std::vector<std::string>& paths) {
    if (!helper_.joinable() || paths.empty()) return;
    {
        std::lock_guard lock(mutex_);
        for (auto p = paths.rbegin(); p != paths.rend(); ++p) {
            jobs_.try_emplace(*p);
            next_.push_back(*p);
        }
    }
    changed_.notify_all();
}

int FolderLister::take(const std::string& path, std::vector<DirectoryEntry>& entries) {
    std::unique_lock lock(mutex_);
    const auto found = jobs_.find(path);
    Job* job = found == jobs_.end() ? nullptr : &found->second;  // stays valid on rehashing
    if (job && job->state != State::Queued) {
        changed_.wait(lock, [&] { return job->state == State::Done; });
        const int error = job->error;
        entries = std::move(job->entries);
        held_ -= entries.size();
        jobs_.erase(path);
        lock.unlock();
        changed_.notify_all();
        return error;
    }
    if (job) job->state = State::Walk;  // the helper passes it by
    lock.unlock();
    const int error = reader_.list(path, entries);
    if (job) {
        lock.lock();
        jobs_.erase(path);
    }
    return error;
}

void FolderLister::help() {
    std::unique_lock lock(mutex_);
    for (;;) {
        changed_.wait(lock, [&] { return stop_ || (!next_.empty() && held_ < kHeldLimit); });
        if (stop_) return;
        const std::string path = std::move(next_.back());
        next_.pop_back();
        auto job = jobs_.find(path);
        if (job == jobs_.end() || job->second.state != State::Queued) continue;
        job->second.state = State::Helper;
        lock.unlock();
        std::vector<DirectoryEntry> entries;
        const int error = reader_.list(path, entries);
        lock.lock();
        job = jobs_.find(path);  // still there: only the walk erases, after Done
        job->second.error = error;
        held_ += entries.size();
        job->second.entries = std::move(entries);
        job->second.state = State::Done;
        changed_.notify_all();
    }
}

}  // namespace quiller::sync
