// Start-up: the engine's state, the command line, the start-up variables, and the end of a run.
#include <chrono>
#include <new>

#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "engine/registry_engine.hpp"
#include "ui/window_placement.hpp"
#include "value/text.hpp"
#include "value/value.hpp"
#include "version.hpp"

// The program's settings in the registry (kSettingsKey): "LastPrg", the script last chosen in
// the file-choosing window (offered there next time; a script named on the command line is not
// remembered).
namespace quiller {

Engine::Engine(Host& host, Platform& platform, const Language& language)
    : host_(host),
      platform_(platform),
      language_(language),
      version_(std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "." +
               std::to_string(kVersionRevision)),
      output_(kLineBreak) {
    output_.set_caption(caption());
    // A script waiting for a program keeps the windows alive.
    if (platform_.processes)
        platform_.processes->while_waiting = [this] { host_.process_events(); };
}

Engine::~Engine() {
    if (platform_.processes) platform_.processes->while_waiting = nullptr;
}

std::string Engine::caption(std::string_view suffix) const {
    std::string c = "Quiller v" + version_;
    c += suffix;
    return c;
}

int Engine::run(std::string_view command_line) {
    try {
        return run_script(command_line);
    } catch (const EndProgram& ended) {  // while a run ends (output that can't be written)
        files_.close_all();
        return ended.exit_status;
    } catch (const std::bad_alloc&) {  // out of memory outside a statement (loading, the end)
        files_.close_all();
        return 1;
    }
}

int Engine::run_script(std::string_view command_line) {
    try {
        startup(command_line);
        do_prg();
        finish_run();
        return 0;
    } catch (const RunEnded& ended) {
        if (ended.exit_status == 0) finish_run();
        files_.close_all();
        return ended.exit_status;
    } catch (const EndProgram& ended) {  // the user ended the program at once
        files_.close_all();
        host_.debug_hide();
        return ended.exit_status;
    }
}

void Engine::end_run(int exit_status) {
    throw RunEnded{exit_status};
}

void Engine::startup(std::string_view command_line) {
    random_.seed(static_cast<std::uint64_t>(
        std::chrono::high_resolution_clock::now().time_since_epoch().count()));
    host_.process_events();
    current_year_ = value::split_date(platform_.clock->now()).year;

    Slots command;
    std::string ignored_options;
    split_arguments(command_line, false, command, ignored_options);
    std::string script = command[1];
    if (script.empty()) {
        std::string message = "You must supply a .PRG program file as the first parameter.";
        message += kLineBreak;
        message += kLineBreak;
        message += "(See README.TXT for valid script commands)";
        chosen_script_ = registry_operations(*this).read_reg(kSettingsKey, "LastPrg");
        report_error(message, Severity::ChooseFile);
        script = chosen_script_;
        if (script.empty()) end_run(2);
        registry_operations(*this).write_reg(kSettingsKey, "LastPrg", script, "REG_SZ");
    }
    if (script.find('.') == std::string::npos) script += ".prg";

    const text::PathParts parts = text::split_path(script);
    const bool drive_relative = parts.directory.empty() && script.find(':') != std::string::npos;
    variables_.set("apppath", drive_relative ? std::string() : parts.directory);
    std::string ver = version_;
    std::erase(ver, '.');
    variables_.set("ver", ver);
    publish_parameters(command, 2);

    read_prg(script, 0);
}

void Engine::publish_parameters(const Slots& slots, int first) {
    int count = 0;
    for (int i = first; i <= kSlotCount; ++i) {
        if (slots[i].empty()) continue;
        variables_.set("param[" + std::to_string(i - 1) + "]", slots[i]);
        ++count;
    }
    variables_.set("param_count", std::to_string(count));
    for (int k = count + 1;; ++k) {
        const std::string name = "param[" + std::to_string(k) + "]";
        if (!variables_.exists(name)) break;
        variables_.set(name, "");
    }
}

void Engine::finish_run() {
    files_.close_all();
    output_.set_visible(host_.output_visible(output_));
    if (output_.visible()) {
        output_.finish();
        host_.output_finished(output_);
        output_.set_visible(false);
    }
    host_.debug_hide();
    host_.process_events();
}

}  // namespace quiller
