#include "engine/statements.hpp"

#include <string>
#include <unordered_map>

namespace quiller {
namespace {

using namespace statements;

constexpr StatementDef kStatements[] = {
    {"addprinter", "quiet", addprinter},
    {"call", "quiet", call},
    {"copy", "quiet animated", copy},
    {"debug", "quiet", debug},
    {"del", "quiet", del},
    {"delregvalue", "quiet", delregvalue},
    {"delregkey", "quiet", delregkey},
    {"dir", "quiet sub dirsonly", dir},
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
    {"loadreg", "quiet", loadreg},
    {"md", "quiet", md},
    {"pause", "quiet", pause},
    {"popup", "quiet cancel", not_available},
    {"print", "quiet clear insert", print},
    {"printtofile", "quiet", printtofile},
    {"printwindow", "quiet", printwindow},
    {"readinisection", "quiet", readinisection},
    {"rd", "quiet severe", rd},
    {"rename", "quiet", rename},
    {"sendkeys", "quiet", sendkeys},
    {"set", "quiet", set},
    {"setattrib", "quiet", setattrib},
    {"shell", "quiet wait minimized maxmized hidden", shell},
    {"shutdown", "quiet", shutdown},
    {"web", "quiet", web},
    {"writeini", "quiet delete", writeini},
    {"writereg", "quiet", writereg},
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
