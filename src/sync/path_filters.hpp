// The path filters of directory synchronisation, kept by the `exclude` statement for the whole
// run: patterns in lower case, each an exclusion or an inclusion, tested as plain substrings of a
// full path. An inclusion overrides every exclusion, whatever the order of the entries.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quiller::sync {

class PathFilters {
  public:
    void reset() { entries_.clear(); }
    // Appends a pattern (lower-cased here).
    void add(std::string_view pattern, bool include);
    bool empty() const { return entries_.empty(); }

    // True when some exclusion occurs in the path and no inclusion does (case-blind).
    bool excluded(std::string_view path) const;

  private:
    struct Entry {
        std::string pattern;
        bool include;
    };
    std::vector<Entry> entries_;
};

}  // namespace quiller::sync
