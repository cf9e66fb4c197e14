// Reads the tab-separated tables of tests/reference (the platform's answers: one row per line,
// the first line naming the columns) and of tests/unit/cases (cases of our own: "#" starts a
// comment line, \x{NN} in a cell is the byte NN).
#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#if !defined(QUILLER_REFERENCE_DIR) || !defined(QUILLER_CASES_DIR)
#error "QUILLER_REFERENCE_DIR and QUILLER_CASES_DIR must name the directories of the tables"
#endif

namespace quiller::test {

struct ReferenceRow {
    int line;  // 1-based line number in the file
    std::vector<std::string> cells;
};

inline std::string unescape_cell(const std::string& cell) {
    std::string out;
    for (std::size_t i = 0; i < cell.size(); ++i) {
        if (cell.compare(i, 3, "\\x{") == 0 && i + 6 <= cell.size() && cell[i + 5] == '}') {
            out += static_cast<char>(std::stoi(cell.substr(i + 3, 2), nullptr, 16));
            i += 5;
        } else {
            out += cell[i];
        }
    }
    return out;
}

// Rows of a table, split at tabs. An empty vector when the file can't be read.
inline std::vector<ReferenceRow> load_table(const std::string& path, bool is_case_table) {
    std::ifstream in(path, std::ios::binary);
    std::vector<ReferenceRow> rows;
    std::string line;
    for (int n = 1; std::getline(in, line); ++n) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (is_case_table ? line.empty() || line[0] == '#' : n == 1) continue;
        ReferenceRow row{n, {}};
        std::istringstream cells(line);
        for (std::string cell; std::getline(cells, cell, '\t');)
            row.cells.push_back(is_case_table ? unescape_cell(cell) : cell);
        if (!line.empty() && line.back() == '\t') row.cells.emplace_back();
        rows.push_back(std::move(row));
    }
    return rows;
}

inline std::vector<ReferenceRow> load_reference(const std::string& file) {
    return load_table(std::string(QUILLER_REFERENCE_DIR) + "/" + file, false);
}

inline std::vector<ReferenceRow> load_cases(const std::string& file) {
    return load_table(std::string(QUILLER_CASES_DIR) + "/" + file, true);
}

// A number column of a table, read exactly.
inline double to_double(const std::string& s) {
    double v = 0;
    auto [ptr, ec] = std::from_chars(s.data(), s.data() + s.size(), v);
    EXPECT_TRUE(ec == std::errc{} && ptr == s.data() + s.size()) << "bad number: " << s;
    return v;
}

}  // namespace quiller::test
