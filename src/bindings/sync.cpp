// Directory synchronisation: the `dirscan` statement.
#include "bindings/sync.hpp"

#include "engine/engine.hpp"
#include "engine/registry_engine.hpp"
#include "sync/scan.hpp"
#include "value/text.hpp"

namespace quiller::statements {
namespace {

// An option word from the braces or from the argument `slot` (the options argument).
bool option(Engine& e, std::string_view slot, std::string_view word) {
    return e.has_option(word) || text::ifind(slot, word) != std::string_view::npos;
}

// An activity line goes out as a `print` line does.
void activity(Engine& e, const std::string& line) {
    OutputModel& out = e.output();
    out.show({}, line, false, false);
    out.set_visible(true);
    e.host().output_printed(out, line);
}

}  // namespace

void dirscan(Engine& e) {
    const Slots& slots = e.slots();
    const std::unique_ptr<DirectoryReader> reader = make_directory_reader();
    RegistryOperations registry = registry_operations(e);
    sync::ScanServices services{*e.platform().files,
                                *reader,
                                registry,
                                *e.platform().clock,
                                e.host(),
                                [&e](const std::string& line) { activity(e, line); },
                                [&e](const std::string& message, const std::string& system) {
                                    e.report_error(message, Severity::Warning, system);
                                }};
    sync::ScanOptions options;
    options.subfolders = !option(e, slots[3], "nosub");
    options.progress = option(e, slots[3], "progress");
    sync::dirscan(services, slots[1], slots[2], options);
}

}  // namespace quiller::statements
