#include "engine/statements.hpp"

#include <string>
#include <unordered_map>

namespace quiller {
namespace {

using namespace statements;

constexpr StatementDef kStatements[] = {
    {"addprinter", "quiet", not_available},
    {"call", "quiet", call},
    {"copy", "quiet animated", not_available},
    {"debug", "quiet", debug},
    {"del", "quiet", not_available},
    {"delregvalue", "quiet", not_available},
    {"delregkey", "quiet", not_available},
    {"dir", "quiet sub dirsonly", not_available},
    {"dircopy", "quiet hidemeter ask progress nosub", not_available},
    {"dirscan", "quiet progress nosub", not_available},
    {"else", "quiet", else_},
    {"endif", "quiet", nothing},
    {"endsub", "quiet", endsub},
    {"endwhile", "quiet", endwhile},
    {"end", "quiet", end},
    {"goto", "quiet", goto_},
    {"if", "quiet", if_},
    {"ifnot", "quiet", ifnot},
    {"label", "quiet", nothing},
    {"repeat", "quiet", nothing},
    {"until", "quiet", until},
    {"while", "quiet", while_},
    {"sub", "quiet", nothing},
    {"environment", "quiet", environment},
    {"errorshow", "quiet", errorshow},
    {"exclude", "quiet reset include", not_available},
    {"fileclose", "quiet", fileclose},
    {"filewrite", "quiet", filewrite},
    {"load", "quiet", load},
    {"loadreg", "quiet", not_available},
    {"md", "quiet", not_available},
    {"pause", "quiet", pause},
    {"popup", "quiet cancel", not_available},
    {"print", "quiet clear insert", print},
    {"printtofile", "quiet", printtofile},
    {"printwindow", "quiet", printwindow},
    {"readinisection", "quiet", readinisection},
    {"rd", "quiet severe", not_available},
    {"rename", "quiet", not_available},
    {"sendkeys", "quiet", not_available},
    {"set", "quiet", set},
    {"setattrib", "quiet", not_available},
    {"shell", "quiet wait minimized maxmized hidden", not_available},
    {"shutdown", "quiet", not_available},
    {"web", "quiet", not_available},
    {"writeini", "quiet delete", writeini},
    {"writereg", "quiet", not_available},
};

}  // namespace

std::span<const StatementDef> statement_table() {
    return kStatements;
}

int find_statement(std::string_view keyword) {
    static const std::unordered_map<std::string_view, int> index = [] {
        std::unordered_map<std::string_view, int> map;
        for (int i = 0; i < static_cast<int>(std::size(kStatements)); ++i)
            map.emplace(kStatements[i].keyword, i);
        return map;
    }();
    auto it = index.find(keyword);
    return it == index.end() ? -1 : it->second;
}

}  // namespace quiller
