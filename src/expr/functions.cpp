#include "expr/functions.hpp"

#include <unordered_map>

#include "value/text.hpp"
#include "engine/engine.hpp"
#include "expr/set_expression.hpp"

namespace quiller {
namespace {

// Every name of the language's function table. A name that no group provides reports that it
// is not available yet, rather than being unknown.
constexpr std::string_view kAllNames[] = {
    "adjustmaster",
    "asc",
    "ask",
    "password",
    "askyesno",
    "chr",
    "connectedto",
    "connectedhow",
    "date",
    "decode",
    "encode",
    "dirsize",
    "diskspace",
    "enumregkeys",
    "enumregvalues",
    "filedate",
    "filesize",
    "fileopen",
    "fileread",
    "find",
    "findrev",
    "getattrib",
    "getnetdc",
    "getnetcomputername",
    "getnetcomputerdomain",
    "getnetusername",
    "getnetuserdomain",
    "getnetipaddress",
    "getnethostname",
    "getmemtotal",
    "getmemavail",
    "gettempdir",
    "gettempfile",
    "lcase",
    "len",
    "mid",
    "netuse",
    "netusedel",
    "random",
    "readreg",
    "readini",
    "regvaluetype",
    "replacestring",
    "replacestringinfile",
    "time",
    "trim",
    "ucase",
    "word",
};

const std::unordered_map<std::string_view, const FunctionDef*>& function_index() {
    static const auto index = [] {
        std::unordered_map<std::string_view, const FunctionDef*> map;
        for (auto group : {text_functions(), date_number_functions(), file_functions(),
                           ini_functions(), question_functions(), system_functions(),
                           registry_functions(), network_functions()}) {
            for (const FunctionDef& f : group) map.emplace(f.name, &f);
        }
        return map;
    }();
    return index;
}

}  // namespace

std::string_view FunctionCall::arg(int n) const {
    const int word = n + 2;
    return word <= kSlotCount ? text::unquote(words[word]) : std::string_view{};
}

bool FunctionCall::line_has(std::string_view word) const {
    return text::ifind(line_text, word) != std::string_view::npos;
}

const FunctionDef* find_function(std::string_view name) {
    const auto& index = function_index();
    auto it = index.find(name);
    return it == index.end() ? nullptr : it->second;
}

bool is_pending_function(std::string_view name) {
    for (std::string_view n : kAllNames)
        if (n == name) return true;
    return false;
}

std::string eval_string(Engine& engine, const Slots& words, std::string_view line_text) {
    const std::string_view word2 = words[2];
    if (!word2.empty() && (word2.front() == '^' || word2.front() == '"' || word2.front() == '\''))
        return eval_value_expression(words, engine.current_year());

    const std::string name = text::to_lower(text::trim(word2));
    if (const FunctionDef* f = find_function(name))
        return f->run(FunctionCall{engine, words, line_text});
    if (is_pending_function(name)) {
        engine.report_error("(EvalString) : " + name + " is not available yet", Severity::Warning);
        return {};
    }
    std::string message =
        "(EvalString) : " + words[2] + " " + words[3] + " " + words[4] + " " + words[5];
    message += kLineBreak;
    message += "Unrecognized command : ";
    message += line_text;
    engine.report_error(message, Severity::Warning);
    return {};
}

}  // namespace quiller
