// The network and accounts service: the user's groups, workstation and user names, domain and
// domain controller, host name and address, drive and printer connections, keystrokes to the
// active window.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quiller {

// Modifier keys held down while a key is pressed.
enum KeyModifier : std::uint8_t { kKeyShift = 1, kKeyControl = 2, kKeyAlt = 4 };

// One key press: a character to type, or a key by its Windows virtual-key code.
struct KeyStroke {
    char32_t character = 0;         // set for a typed character
    std::uint16_t virtual_key = 0;  // set for a named key ({ENTER}, {F5}, ...)
    std::uint8_t modifiers = 0;     // KeyModifier bits
    bool operator==(const KeyStroke&) const = default;
};

// A connection `netuse` asks for.
struct NetConnection {
    std::string local;     // "X:", "LPT1", or empty for a connection without a local name
    std::string remote;    // "\\server\share" or "\\server\printer"
    std::string user;      // empty: the current user's credentials
    std::string password;  // empty: the default password for `user`
    bool printer = false;
    bool persistent = false;  // restored at the next logon
};

// The operations from `domain_controller` on give nothing when this system has no such thing
// at all (the caller warns); otherwise their text, empty where nothing was found.
class Network {
  public:
    virtual ~Network() = default;

    // The names of the current user's groups; nothing when they can't be read.
    virtual std::optional<std::vector<std::string>> user_groups() = 0;

    // Workstation facts; each is empty when the system can't tell.
    virtual std::string user_name() = 0;
    virtual std::string user_domain() = 0;
    virtual std::string computer_name() = 0;
    virtual std::string computer_domain() = 0;
    virtual std::string host_name() = 0;
    virtual std::string ip_address() = 0;

    // The domain controller of `domain` (empty: the computer's own) as "\\NAME".
    virtual std::optional<std::string> domain_controller(const std::string& domain) = 0;
    // What a local name (drive, printer port, mount point) is connected to, and through what.
    virtual std::optional<std::string> connected_to(const std::string& local) = 0;
    virtual std::optional<std::string> connected_how(const std::string& local) = 0;

    // These give the empty text on success, else the system's failure text.
    virtual std::optional<std::string> connect(const NetConnection& connection) = 0;
    virtual std::optional<std::string> disconnect(const std::string& name, bool force,
                                                  bool forget) = 0;
    virtual std::optional<std::string> add_printer(const std::string& printer) = 0;
    virtual std::optional<std::string> send_keys(std::span<const KeyStroke> keys) = 0;
};

// The implementation for the platform this build targets.
std::unique_ptr<Network> make_network();

// One address of a network interface, as the system lists them.
struct InterfaceAddress {
    std::string address;  // dotted form for IPv4
    bool ipv4 = true;
    bool up = true;
    bool loopback = false;
};

// The address `getnetipaddress` reports: the first IPv4 address of an interface that is up and
// not a loopback, preferring any other to a self-assigned one (169.254.x.x); empty when none.
std::string pick_ipv4_address(std::span<const InterfaceAddress> addresses);

}  // namespace quiller
