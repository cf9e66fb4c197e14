// The sorted listing of a tree of 1,000,000 entries (1,000 folders of 1,000 files) for the
// synchronisation benchmarks, each file as it is or edited.
#pragma once

#include <cstdio>

#include "sync/listing.hpp"
#include "sync/sort.hpp"

namespace quiller::sync::bench {

constexpr int kFolders = 1000, kFiles = 1000;

enum class FileEdit { None, Changed, Gone, Renamed };

// `edit(k)` says what became of file k (folder * kFiles + file): a changed file is 4096 bytes
// instead of 2048, a renamed one has another number.
template <class Edit>
Listing tree_listing(Edit edit) {
    Listing l;
    l.reserve(kFolders * (kFiles + 1), kFolders * (kFiles + 1) * 22);
    char name[64];
    for (int d = 0; d < kFolders; ++d) {
        std::snprintf(name, sizeof name, "folder%04d", d);
        l.add(name, 45000, kAttrDirectory, 0);
        for (int f = 0; f < kFiles; ++f) {
            const FileEdit e = edit(d * kFiles + f);
            if (e == FileEdit::Gone) continue;
            std::snprintf(name, sizeof name, "folder%04d/file%04d.dat", d,
                          e == FileEdit::Renamed ? f + 5000 : f);
            l.add(name, 45000.5, kAttrArchive, e == FileEdit::Changed ? 4096 : 2048);
        }
    }
    sort_listing(l);
    return l;
}

}  // namespace quiller::sync::bench
