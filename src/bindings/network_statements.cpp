// The statements of the network service: `addprinter` and `sendkeys`.
#include "engine/engine.hpp"
#include "engine/statements.hpp"
#include "os/network_keys.hpp"

namespace quiller::statements {
namespace {

// Reports a missing service or a failure; `failure` is the system's text.
void report(Engine& e, const std::optional<std::string>& failure, std::string_view missing,
            const std::string& what) {
    if (!failure)
        e.report_error(missing, Severity::Warning);
    else if (!failure->empty())
        e.report_error(what, Severity::Warning, *failure);
}

}  // namespace

// addprinter \\SERVER\PRINTER: connects a shared printer for the current user.
void addprinter(Engine& e) {
    const std::string& printer = e.slots()[1];
    if (printer.empty()) {
        e.report_error("(addprinter) No printer was given", Severity::Warning);
        return;
    }
    Network* n = e.platform().network.get();
    report(e, n ? n->add_printer(printer) : std::nullopt,
           "(addprinter) Printer connections are not available on this system",
           "(addprinter) Couldn't connect the printer '" + printer + "'");
}

// sendkeys KEYS: types KEYS (slot 1) into the active window. Keys that begin with "{" or hold
// blanks are quoted, as the line's last "{...}" is its options.
void sendkeys(Engine& e) {
    const KeyParse parsed = parse_keys(e.slots()[1]);
    if (!parsed.error.empty()) {
        e.report_error("(sendkeys) " + parsed.error, Severity::Warning);
        return;
    }
    Network* n = e.platform().network.get();
    report(e, n ? n->send_keys(parsed.keys) : std::nullopt,
           "(sendkeys) Keystrokes can't be sent on this system",
           "(sendkeys) Couldn't send the keys");
}

}  // namespace quiller::statements
