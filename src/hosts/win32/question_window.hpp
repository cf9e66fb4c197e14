// `AskForm`, the question window: `QuestionLabel`, `AnswerText`, `Button1` and `Button2`, laid
// out, captioned and ordered as the question model says. It lives for one question.
#pragma once

#include <string>

#include "hosts/win32/host_context.hpp"
#include "ui/host.hpp"

namespace quiller::win32 {

// Shows the question modally and returns the answer. The program's other windows wait.
std::string ask_question(HostContext& c, const Question& q);

}  // namespace quiller::win32
