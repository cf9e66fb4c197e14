// Reads the tab-separated reference tables of tests/reference: one row per line, the first line
// naming the columns.
#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#ifndef QUILLER_REFERENCE_DIR
#error "QUILLER_REFERENCE_DIR must name the directory of the reference tables"
#endif

namespace quiller::test {

struct ReferenceRow {
    int line;  // 1-based line number in the file
    std::vector<std::string> cells;
};

// Rows of `file` (header skipped), split at tabs. An empty vector when the file can't be read.
inline std::vector<ReferenceRow> load_reference(const std::string& file) {
    std::ifstream in(std::string(QUILLER_REFERENCE_DIR) + "/" + file, std::ios::binary);
    std::vector<ReferenceRow> rows;
    std::string line;
    for (int n = 1; std::getline(in, line); ++n) {
        if (n == 1) continue;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        ReferenceRow row{n, {}};
        std::istringstream cells(line);
        for (std::string cell; std::getline(cells, cell, '\t');) row.cells.push_back(cell);
        if (!line.empty() && line.back() == '\t') row.cells.emplace_back();
        rows.push_back(std::move(row));
    }
    return rows;
}

// A number column of a table, read exactly.
inline double to_double(const std::string& s) {
    double v = 0;
    auto [ptr, ec] = std::from_chars(s.data(), s.data() + s.size(), v);
    EXPECT_TRUE(ec == std::errc{} && ptr == s.data() + s.size()) << "bad number: " << s;
    return v;
}

}  // namespace quiller::test
