// Questions: the functions `ask`, `password` and `askyesno`, through the host's question window.
#include "bindings/questions.hpp"

#include "engine/engine.hpp"
#include "expr/functions.hpp"

namespace quiller {
namespace {

// a1 is the question, a2 the default answer.
Question question(const FunctionCall& call, const char* kind) {
    Question q;
    q.kind = kind;
    q.question = call.arg(1);
    q.default_answer = call.arg(2);
    q.caption = call.engine.caption(" Question");
    return q;
}

}  // namespace

namespace functions {

std::string ask(const FunctionCall& call) {
    Question q = question(call, "text");
    if (call.line_has("password")) q.password_char.push_back('*');
    return call.engine.host().ask(q);
}

std::string askyesno(const FunctionCall& call) {
    return call.engine.host().ask(question(call, "yesno"));
}

}  // namespace functions

}  // namespace quiller
