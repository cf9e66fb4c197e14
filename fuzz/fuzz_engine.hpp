// An engine for fuzzing: a host that answers everything at once and stops a run after a fixed
// number of lines (through the debugger hook, so endless loops end), over in-memory files and
// registry and services that do nothing (no program starts, no network; the in-memory files have
// no tree operations).
#pragma once

#include <memory>

#include "bindings/language.hpp"
#include "engine/engine.hpp"
#include "scripted_host.hpp"

namespace quiller::fuzz {

class FuzzHost final : public Host {
  public:
    int steps_left = 1000;

    void output_printed(const OutputModel&, std::string_view) override {}
    void output_pause(const OutputModel&, std::string_view) override {}
    void output_finished(const OutputModel&) override {}
    std::string ask(const Question& q) override { return q.default_answer; }
    ErrorChoice show_error(Severity, std::string_view, std::string_view) override {
        return ErrorChoice::Continue;
    }
    std::string choose_script(std::string_view, std::string_view, std::string_view) override {
        return {};
    }
    MessageBoxResult message_box(std::string_view, std::string_view, MessageBoxButtons) override {
        return MessageBoxResult::Ok;
    }
    DebugAction debug_stop(const DebugView&) override {
        return --steps_left > 0 ? DebugAction::Step : DebugAction::Terminate;
    }
};

class NoProcesses final : public Processes {
  public:
    std::optional<std::uint32_t> shell_command(const std::string&, bool, WindowState) override {
        return std::nullopt;
    }
    void wait_for_process(std::uint32_t) override {}
    int open_document(const std::string&, const std::string&) override {
        return kOpenNoAssociation;
    }
    bool is_windows_nt() override { return true; }
    void exit_system(int) override {}
};

class NoNetwork final : public Network {
  public:
    std::optional<std::vector<std::string>> user_groups() override {
        return std::vector<std::string>{"Users"};
    }
    std::string user_name() override { return "ada"; }
    std::string user_domain() override { return "CORVALE"; }
    std::string computer_name() override { return "WS01"; }
    std::string computer_domain() override { return "CORVALE"; }
    std::string host_name() override { return "ws01"; }
    std::string ip_address() override { return "10.0.0.1"; }
    std::optional<std::string> domain_controller(const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> connected_to(const std::string&) override { return std::nullopt; }
    std::optional<std::string> connected_how(const std::string&) override { return std::nullopt; }
    std::optional<std::string> connect(const NetConnection&) override { return std::nullopt; }
    std::optional<std::string> disconnect(const std::string&, bool, bool) override {
        return std::nullopt;
    }
    std::optional<std::string> add_printer(const std::string&) override { return std::nullopt; }
    std::optional<std::string> send_keys(std::span<const KeyStroke>) override {
        return std::nullopt;
    }
};

// The platform of one fuzzed run; `files` holds the in-memory files.
struct FuzzPlatform {
    Platform platform;
    testing::MemoryFiles* files;

    FuzzPlatform() {
        auto f = std::make_unique<testing::MemoryFiles>();
        files = f.get();
        platform.files = std::move(f);
        platform.environment = std::make_unique<testing::FixedEnvironment>();
        platform.clock = std::make_unique<testing::FixedClock>();
        platform.registry = make_memory_registry_store();
        platform.processes = std::make_unique<NoProcesses>();
        platform.network = std::make_unique<NoNetwork>();
    }
};

// Texts are kept short: a doubling loop stays small, and each debugger stop copies every value.
inline constexpr std::size_t kFuzzTextLimit = 4096;

}  // namespace quiller::fuzz
