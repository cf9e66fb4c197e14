// Reads the tab-separated tables of tests/reference (the platform's answers: one row per line,
// the first line naming the columns) and of tests/unit/cases (cases of our own: "#" starts a
// comment line, \x{NN} in a cell is the byte NN).
#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <fstream>
#include <functional>
#include <map>
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

using Cells = std::vector<std::string>;
using Operations = std::map<std::string, std::function<std::string(const Cells&)>, std::less<>>;

// How a case table's rows are run beyond their operations: `prefix` is called before each row
// with the operation's prefix ("" when it has none, never "posix" or "win"); `same` compares the
// answer with the expected one (equality when not given).
struct CaseHooks {
    std::function<void(std::string_view prefix)> prefix;
    std::function<bool(std::string_view op, const std::string& got, const std::string& expected)>
        same;
};

// Checks every row "OPERATION ARGUMENT... EXPECTED [# why]" of a case table with `ops`. An
// operation prefixed "posix:" or "win:" runs on that platform only.
inline void check_case_table(const std::string& file, const Operations& ops,
                             const CaseHooks& hooks = {}) {
    const std::vector<ReferenceRow> rows = load_cases(file);
    ASSERT_FALSE(rows.empty()) << file;
    for (const ReferenceRow& row : rows) {
        Cells args = row.cells;
        const std::string why = args.back().starts_with("# ") ? args.back() : "";
        if (!why.empty()) args.pop_back();
        ASSERT_GE(args.size(), 2u) << file << " line " << row.line << ": too few columns";
        std::string op = args.front();
        const std::string expected = args.back();
        args.erase(args.begin());
        args.pop_back();
#ifdef _WIN32
        if (op.starts_with("posix:")) continue;
#else
        if (op.starts_with("win:")) continue;
#endif
        const std::size_t colon = op.find(':');
        const std::string prefix = colon == std::string::npos ? "" : op.substr(0, colon);
        op.erase(0, colon + 1);
        if (hooks.prefix) hooks.prefix(prefix == "posix" || prefix == "win" ? "" : prefix);
        const auto it = ops.find(op);
        ASSERT_NE(it, ops.end()) << file << " line " << row.line << ": " << op;
        const std::string got = it->second(args);
        EXPECT_TRUE(hooks.same ? hooks.same(op, got, expected) : got == expected)
            << file << " line " << row.line << ": " << op << " [" << (args.empty() ? "" : args[0])
            << "] expected [" << expected << "], got [" << got << "] " << why;
    }
}

// A number column of a table, read exactly.
inline double to_double(const std::string& s) {
    double v = 0;
    auto [ptr, ec] = std::from_chars(s.data(), s.data() + s.size(), v);
    EXPECT_TRUE(ec == std::errc{} && ptr == s.data() + s.size()) << "bad number: " << s;
    return v;
}

}  // namespace quiller::test
