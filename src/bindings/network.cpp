// The network and accounts: the functions, the group test and the statements `addprinter` and
// `sendkeys`. What a system has no notion of (a domain controller, a drive connection) gives a
// warning and the empty text.
#include "bindings/network.hpp"

#include <algorithm>

#include "engine/engine.hpp"
#include "expr/functions.hpp"
#include "os/network_keys.hpp"
#include "value/text.hpp"

namespace quiller {
namespace {

using Fact = std::string (Network::*)();

Network* service(Engine& e) {
    return e.platform().network.get();
}

std::string fact(const FunctionCall& c, Fact what) {
    Network* n = service(c.engine);
    return n ? (n->*what)() : std::string();
}

// The text of an operation, or a warning and the empty text when the system lacks it.
std::string answer(Engine& e, std::optional<std::string> text, std::string_view missing) {
    if (text) return std::move(*text);
    e.report_error(missing, Severity::Warning);
    return {};
}

std::string kind_of(const FunctionCall& c) {
    return c.line_has("printer") ? "Printer" : "Drive";
}

}  // namespace

namespace functions {

std::string getnetusername(const FunctionCall& c) {
    return fact(c, &Network::user_name);
}

std::string getnetuserdomain(const FunctionCall& c) {
    return fact(c, &Network::user_domain);
}

std::string getnetcomputername(const FunctionCall& c) {
    return fact(c, &Network::computer_name);
}

std::string getnetcomputerdomain(const FunctionCall& c) {
    return fact(c, &Network::computer_domain);
}

std::string getnethostname(const FunctionCall& c) {
    return fact(c, &Network::host_name);
}

std::string getnetipaddress(const FunctionCall& c) {
    return fact(c, &Network::ip_address);
}

// a1 the domain; empty for the computer's own.
std::string getnetdc(const FunctionCall& c) {
    Network* n = service(c.engine);
    return answer(c.engine, n ? n->domain_controller(std::string(c.arg(1))) : std::nullopt,
                  "(getnetdc) Domain controllers are not available on this system");
}

// a1 the local name: a drive "X:", a printer port "LPT1" or, on POSIX, a mount point.
std::string connectedto(const FunctionCall& c) {
    Network* n = service(c.engine);
    return answer(c.engine, n ? n->connected_to(std::string(c.arg(1))) : std::nullopt,
                  "(connectedto) Connections are not available on this system");
}

std::string connectedhow(const FunctionCall& c) {
    Network* n = service(c.engine);
    return answer(c.engine, n ? n->connected_how(std::string(c.arg(1))) : std::nullopt,
                  "(connectedhow) Connections are not available on this system");
}

// netuse LOCAL REMOTE [USER PASSWORD]: "printer" anywhere in the line connects a printer port,
// "persistent" restores the connection at the next logon. The empty text on success, else the
// reason of the failure.
std::string netuse(const FunctionCall& c) {
    const NetConnection connection{std::string(c.arg(1)), std::string(c.arg(2)),
                                   std::string(c.arg(3)), std::string(c.arg(4)),
                                   c.line_has("printer"), c.line_has("persistent")};
    Network* n = service(c.engine);
    return answer(c.engine, n ? n->connect(connection) : std::nullopt,
                  "(netuse) " + kind_of(c) + " connections are not available on this system");
}

// netusedel NAME: "force" drops the connection even with files open on it, "persistent" also
// forgets it for the next logon.
std::string netusedel(const FunctionCall& c) {
    Network* n = service(c.engine);
    const std::string name(c.arg(1));
    return answer(
        c.engine,
        n ? n->disconnect(name, c.line_has("force"), c.line_has("persistent")) : std::nullopt,
        "(netusedel) " + kind_of(c) + " connections are not available on this system");
}

}  // namespace functions

namespace conditions {

// `if isingroup GROUP`: the group name as written, compared without regard to case; false on
// any failure.
bool isingroup(Engine& engine, const std::string& group, const std::string&) {
    Network* n = service(engine);
    if (!n || group.empty()) return false;
    const auto groups = n->user_groups();
    return groups && std::any_of(groups->begin(), groups->end(),
                                 [&](const std::string& g) { return text::iequals(g, group); });
}

}  // namespace conditions

namespace statements {

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

}  // namespace statements

}  // namespace quiller
