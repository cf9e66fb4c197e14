#include "engine/language.hpp"

#include <algorithm>
#include <stdexcept>

namespace quiller {
namespace {

template <typename Row, typename Key>
void require_order(std::span<const Row> rows, Key key, const char* table) {
    const auto out_of_order = std::adjacent_find(
        rows.begin(), rows.end(), [&](const Row& a, const Row& b) { return !(key(a) < key(b)); });
    if (out_of_order != rows.end())
        throw std::logic_error(std::string(table) + " table out of order at " +
                               std::string(key(*out_of_order)));
}

template <typename Row, typename Key>
const Row* find_row(std::span<const Row> rows, std::string_view name, Key key) {
    const auto it =
        std::lower_bound(rows.begin(), rows.end(), name,
                         [&](const Row& row, std::string_view n) { return key(row) < n; });
    return it != rows.end() && key(*it) == name ? &*it : nullptr;
}

constexpr auto kKeyword = [](const StatementRow& r) { return r.keyword; };
constexpr auto kName = [](const auto& r) { return r.name; };

}  // namespace

Language::Language(std::span<const StatementRow> statements, std::span<const FunctionRow> functions,
                   std::span<const ConditionTestRow> tests)
    : statements_(statements), functions_(functions), tests_(tests) {
    require_order(statements_, kKeyword, "statement");
    require_order(functions_, kName, "function");
    require_order(tests_, kName, "condition test");
}

const StatementRow* Language::statement(std::string_view keyword) const {
    return find_row(statements_, keyword, kKeyword);
}

const FunctionRow* Language::function(std::string_view name) const {
    return find_row(functions_, name, kName);
}

const ConditionTestRow* Language::test(std::string_view name) const {
    return find_row(tests_, name, kName);
}

}  // namespace quiller
