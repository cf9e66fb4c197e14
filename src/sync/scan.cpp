#include "sync/scan.hpp"

#include <algorithm>
#include <charconv>

#include "sync/scan_file.hpp"
#include "sync/sort.hpp"
#include "sync/walk.hpp"
#include "value/format.hpp"
#include "value/text.hpp"

namespace quiller::sync {

const char* const kDirScansKey = "HKEY_LOCAL_MACHINE\\Software\\Corvale\\Quiller\\DirScans";

namespace {

std::string count_text(std::size_t n) {
    return value::format_number(static_cast<double>(n), "#,##0");
}

std::string time_stamp(Clock& clock) {
    return "  (" + value::format_date(clock.now(), "mmm d hh:mm:ss") + ")";
}

// The progress window of a scan: the remembered count as its total, when there is one.
class ScanProgress {
  public:
    ScanProgress(ScanServices& s, const std::string& root, bool shown)
        : s_(s), root_(root), shown_(shown) {
        if (!shown_) return;
        model_.window = ProgressWindow::Popup;
        model_.title = "Scanning " + root + "...";
        model_.unit = "files";
        const std::string remembered = s_.registry.read_reg(kDirScansKey, root_);
        std::int64_t total = -1;
        const auto [end, ec] =
            std::from_chars(remembered.data(), remembered.data() + remembered.size(), total);
        if (ec != std::errc() || end != remembered.data() + remembered.size() || total < 0)
            total = -1;
        model_.total = total;
        s_.host.progress_show(model_.title, model_.unit);
        if (total >= 0) model_.start_timer(s_.clock.monotonic_seconds());
    }

    bool update(std::size_t count, std::string_view folder) {
        if (shown_) {
            if (model_.total < 0)
                model_.info = count_text(count) + " files";
            else
                model_.done = static_cast<std::int64_t>(count);
            model_.progress_text = std::string(folder) + " " + count_text(count);
            model_.now = s_.clock.monotonic_seconds();
            s_.host.progress_update(model_);
            if (s_.host.progress_cancelled()) return false;
        }
        s_.host.process_events();
        return true;
    }

    void label(std::string text) {
        if (!shown_) return;
        model_.info = std::move(text);
        s_.host.progress_update(model_);
    }

    // The count is remembered for the next scan of this root; the window is cleared.
    void finish(std::size_t count, bool remember) {
        if (!shown_) return;
        if (remember) s_.registry.write_reg(kDirScansKey, root_, std::to_string(count), "REG_SZ");
        model_.info.clear();
        model_.progress_text.clear();
        model_.bar_visible = false;
        model_.total = 0;
        s_.host.progress_close();
    }

  private:
    ScanServices& s_;
    const std::string& root_;
    bool shown_;
    ProgressModel model_;
};

// Waits before a folder is read again: 0.1 s, doubling up to 5 s, the windows kept alive.
bool retry_wait(ScanServices& s, int attempt) {
    int ms = 100 << std::min(attempt - 1, 6);
    ms = std::min(ms, 5000);
    for (int waited = 0; waited < ms; waited += 50) {
        s.host.process_events();
        if (s.host.progress_cancelled()) return false;
        s.clock.sleep_ms(50);
    }
    return true;
}

bool is_directory(FileSystem& files, const std::string& path) {
    const Result<FileEntry> st = files.status(path);
    return st && (st->attributes & kAttrDirectory);
}

}  // namespace

bool scan_tree(ScanServices& s, const std::string& root, const ScanOptions& options,
               Listing& listing) {
    listing.root = root;
    listing.subfolders = options.subfolders;
    ScanProgress progress(s, root, options.progress);
    WalkOptions walk_options;
    walk_options.subfolders = options.subfolders;
    walk_options.helper = s.helper;
    walk_options.tag = s.tag;
    WalkEvents events;
    events.activity = [&](const std::string& line) {
        ++listing.warnings;
        s.activity(line);
    };
    events.progress = [&](std::size_t count, std::string_view folder) {
        return progress.update(count, folder);
    };
    events.retry_wait = [&](int attempt) { return retry_wait(s, attempt); };
    int error = 0;
    const bool ok = walk_tree(root, walk_options, s.reader, events, listing, error);
    if (!ok) {
        s.warning(s.tag + " Scan of " + root + " failed.  See error log.",
                  error != 0 ? s.reader.describe(error).shown() : std::string());
    } else {
        progress.label("Sorting (" + count_text(listing.size()) + " files)...");
        progress.label(count_text(listing.size()) + " files/folders scanned");
    }
    progress.finish(listing.size(), ok);
    return ok;
}

void dirscan(ScanServices& s, const std::string& directory, const std::string& scan_file,
             const ScanOptions& options) {
    if (!is_directory(s.files, directory)) {
        s.warning(s.tag + " '" + directory + "' is not a directory.", {});
        return;
    }
    s.activity("--- Scanning " + directory + time_stamp(s.clock));
    Listing listing;
    if (!scan_tree(s, directory, options, listing)) return;
    s.activity("Sorting dir..." + time_stamp(s.clock));
    sort_listing(listing, [&] { s.host.process_events(); });
    if (const Status written = write_scan_file(s.files, scan_file, listing); !written)
        s.warning(s.tag + " Couldn't write '" + scan_file + "'.", written.error().shown());
}

}  // namespace quiller::sync
