#include "ui/error_window_model.hpp"

#include "ui/host.hpp"

namespace quiller {

ErrorWindowModel::ErrorWindowModel(Severity severity, std::string_view title, std::string_view text,
                                   std::string_view last_script)
    : title_(title), text_(text) {
    choosing_file_ = severity == Severity::ChooseFile;
    fatal_ = severity == Severity::Fatal;
    end_.visible = !fatal_;
    debug_.visible = severity == Severity::Warning;
    browse_.visible = choosing_file_;
    if (choosing_file_) file_name_ = last_script;
}

ErrorChoice ErrorWindowModel::choice() const {
    if (fatal_) return ErrorChoice::EndRun;
    switch (choice_) {
        case Choice::End:
            return ErrorChoice::EndRun;
        case Choice::Debug:
            return ErrorChoice::Debug;
        case Choice::Ok:
            break;
    }
    return ErrorChoice::Continue;
}

std::string ErrorWindowModel::chosen_script() const {
    if (choice_ != Choice::Ok) return {};
    const std::size_t first = file_name_.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return file_name_.substr(first, file_name_.find_last_not_of(" \t") - first + 1);
}

std::string about_text(std::string_view version) {
    std::string t = "Quiller v";
    t += version;
    t += "\n\nRuns .prg scripts that automate workstations and servers.\n\nCorvale";
    return t;
}

}  // namespace quiller
