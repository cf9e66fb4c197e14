#include "expr/functions.hpp"

#include <unordered_map>

#include "common/text.hpp"
#include "engine/engine.hpp"
#include "expr/set_expression.hpp"

namespace quiller {
namespace {

// Every name of the function table. Names without a handler report that they are not
// available yet, rather than being unknown.
constexpr FunctionDef kFunctions[] = {
    {"adjustmaster", nullptr},
    {"asc", nullptr},
    {"ask", nullptr},
    {"password", nullptr},
    {"askyesno", nullptr},
    {"chr", nullptr},
    {"connectedto", nullptr},
    {"connectedhow", nullptr},
    {"date", nullptr},
    {"decode", nullptr},
    {"encode", nullptr},
    {"dirsize", nullptr},
    {"diskspace", nullptr},
    {"enumregkeys", nullptr},
    {"enumregvalues", nullptr},
    {"filedate", nullptr},
    {"filesize", nullptr},
    {"fileopen", nullptr},
    {"fileread", nullptr},
    {"find", nullptr},
    {"findrev", nullptr},
    {"getattrib", nullptr},
    {"getnetdc", nullptr},
    {"getnetcomputername", nullptr},
    {"getnetcomputerdomain", nullptr},
    {"getnetusername", nullptr},
    {"getnetuserdomain", nullptr},
    {"getnetipaddress", nullptr},
    {"getnethostname", nullptr},
    {"getmemtotal", nullptr},
    {"getmemavail", nullptr},
    {"gettempdir", nullptr},
    {"gettempfile", nullptr},
    {"lcase", nullptr},
    {"len", nullptr},
    {"mid", nullptr},
    {"netuse", nullptr},
    {"netusedel", nullptr},
    {"random", nullptr},
    {"readreg", nullptr},
    {"readini", nullptr},
    {"regvaluetype", nullptr},
    {"replacestring", nullptr},
    {"replacestringinfile", nullptr},
    {"time", nullptr},
    {"trim", nullptr},
    {"ucase", nullptr},
    {"word", nullptr},
};

}  // namespace

std::string_view FunctionCall::arg(int n) const {
    const int word = n + 2;
    return word <= kSlotCount ? text::unquote(words[word]) : std::string_view{};
}

const FunctionDef* find_function(std::string_view name) {
    static const std::unordered_map<std::string_view, const FunctionDef*> index = [] {
        std::unordered_map<std::string_view, const FunctionDef*> map;
        for (const FunctionDef& f : kFunctions) map.emplace(f.name, &f);
        return map;
    }();
    auto it = index.find(name);
    return it == index.end() ? nullptr : it->second;
}

std::string eval_string(Engine& engine, const Slots& words, std::string_view line_text) {
    const std::string_view word2 = words[2];
    if (!word2.empty() && (word2.front() == '^' || word2.front() == '"' || word2.front() == '\''))
        return eval_value_expression(words, engine.current_year());

    const std::string name = text::to_lower(text::trim(word2));
    const FunctionDef* f = find_function(name);
    if (f && f->run) return f->run(FunctionCall{engine, words, line_text});
    if (f) {
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
