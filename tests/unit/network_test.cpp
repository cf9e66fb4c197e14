// The network and accounts service without a network: the address choice, the key syntax of
// sendkeys, and what the functions and statements pass to and take from a fake service (the
// warnings of a system without connections are in tests/scripts/network_posix_unavailable.prg).
#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

#include "os/network_keys.hpp"
#include "reference_table.hpp"
#include "scripted_host.hpp"
#include "value/text.hpp"

namespace quiller::testing {
namespace {

using Texts = std::vector<std::string>;

// --- Address choice -------------------------------------------------------------------------

TEST(PickIpv4, FirstUsableAddressSelfAssignedLast) {
    const auto v4 = [](std::string address, bool up = true, bool loopback = false) {
        return InterfaceAddress{std::move(address), true, up, loopback};
    };
    const InterfaceAddress loopback = v4("127.0.0.1", true, true), down = v4("10.0.0.9", false);
    const InterfaceAddress v6 = {"fe80::1", false, true, false};
    using List = std::vector<InterfaceAddress>;
    EXPECT_EQ(pick_ipv4_address(List{loopback, down, v6, v4("127.0.1.1"), v4("192.168.1.20"),
                                     v4("192.168.1.21")}),
              "192.168.1.20");
    EXPECT_EQ(pick_ipv4_address(List{v4("169.254.3.4"), v4("172.16.0.5")}), "172.16.0.5");
    EXPECT_EQ(pick_ipv4_address(List{loopback, v4("169.254.3.4")}), "169.254.3.4");
    EXPECT_EQ(pick_ipv4_address(List{loopback, down}), "");
}

// --- Key syntax: the rows of cases/keys.tsv ----------------------------------------------------

KeyStroke ch(char32_t c, std::uint8_t m = 0) {
    return {c, 0, m};
}
KeyStroke vk(std::uint16_t code, std::uint8_t m = 0) {
    return {0, code, m};
}
using Keys = std::vector<KeyStroke>;

// "shift+ctrl+alt+" as held, then 'c' for a character or vkHH for a named key; a run of one
// stroke as "*N"; strokes separated by blanks. An error is written as it is.
std::string keys_text(std::string_view text) {
    const KeyParse p = parse_keys(text);
    if (!p.error.empty()) return p.keys.empty() ? p.error : "keys beside " + p.error;
    std::string out;
    for (std::size_t i = 0, run = 1; i < p.keys.size(); i += run) {
        const KeyStroke& k = p.keys[i];
        for (run = 1; i + run < p.keys.size() && p.keys[i + run] == k;) ++run;
        if (!out.empty()) out += ' ';
        for (const auto& [bit, name] :
             {std::pair{kKeyShift, "shift+"}, {kKeyControl, "ctrl+"}, {kKeyAlt, "alt+"}})
            if (k.modifiers & bit) out += name;
        char code[8];
        std::snprintf(code, sizeof code, "vk%02X", k.virtual_key);
        std::string c = "'";
        text::append_utf8(c, k.character);
        out += k.virtual_key ? code : c + "'";
        if (run > 1) out += "*" + std::to_string(run);
    }
    return out;
}

TEST(KeySyntax, EveryRowOfTheTable) {
    test::check_case_table("keys.tsv",
                           {{"keys", [](const test::Cells& a) { return keys_text(a[0]); }}});
}

// --- Functions, the group test and the statements over a fake service ------------------------

// What the operations from domain_controller on give: nothing where the system has no such thing.
using Answer = std::optional<std::string>;

class FakeNetwork final : public Network {
  public:
    bool available = true;  // false: the system has no connections at all
    std::optional<Texts> groups = Texts{"Users", "Ops"};
    std::string failure;  // what the next operation answers
    std::string calls;    // the operations asked for, one line each
    Keys sent;

    std::optional<Texts> user_groups() override { return groups; }
    std::string user_name() override { return "ada"; }
    std::string user_domain() override { return "CORVALE"; }
    std::string computer_name() override { return "WS01"; }
    std::string computer_domain() override { return "corvale.example"; }
    std::string host_name() override { return "ws01"; }
    std::string ip_address() override { return "10.0.0.7"; }
    Answer domain_controller(const std::string& d) override { return answer("\\\\DC-" + d); }
    Answer connected_to(const std::string& l) override { return answer("\\\\srv\\" + l); }
    Answer connected_how(const std::string&) override { return answer("Corvale Network"); }
    Answer connect(const NetConnection& c) override {
        return call("connect " + c.local + "|" + c.remote + "|" + c.user + "|" + c.password +
                    (c.printer ? " printer" : "") + (c.persistent ? " persistent" : ""));
    }
    Answer disconnect(const std::string& n, bool force, bool forget) override {
        return call("disconnect " + n + (force ? " force" : "") + (forget ? " forget" : ""));
    }
    Answer add_printer(const std::string& p) override { return call("printer " + p); }
    Answer send_keys(std::span<const KeyStroke> k) override {
        sent.assign(k.begin(), k.end());
        return call("keys");
    }

  private:
    Answer answer(std::string text) const { return available ? Answer(text) : std::nullopt; }
    Answer call(const std::string& what) {
        calls += what + "\n";
        return answer(failure);
    }
};

struct NetHarness : Harness {
    FakeNetwork* net;
    NetHarness() {
        auto n = std::make_unique<FakeNetwork>();
        net = n.get();
        platform.network = std::move(n);
    }
    // Runs the lines as the body of main.
    void body(const std::string& lines) { run("sub main\n" + lines + "endsub\n"); }
    // The "From ..." lines of the error windows shown, one text each.
    Texts messages() const {
        Texts lines;
        for (const ShownError& e : host.errors) {
            std::istringstream in(e.text);
            for (std::string line; std::getline(in, line);)
                if (line.starts_with("From ")) lines.push_back(line);
        }
        return lines;
    }
};

TEST(NetworkFunctions, WorkstationFacts) {
    NetHarness h;
    h.body(
        "set $a$ getnetusername\n print \"$a$\"\n"
        "set $a$ GetNetUserDomain\n print \"$a$\"\n"
        "set $a$ getnetcomputername\n print \"$a$\"\n"
        "set $a$ getnetcomputerdomain\n print \"$a$\"\n"
        "set $a$ getnethostname\n print \"$a$\"\n"
        "set $a$ getnetipaddress\n print \"$a$\"\n"
        "set $a$ getnetdc Sales\n print \"$a$\"\n"
        "set $a$ connectedto \"X:\"\n print \"$a$\"\n"
        "set $a$ connectedhow X:\n print \"$a$\"\n");
    EXPECT_EQ(h.host.printed,
              (Texts{"ada", "CORVALE", "WS01", "corvale.example", "ws01", "10.0.0.7",
                     "\\\\DC-Sales", "\\\\srv\\X:", "Corvale Network"}));
    EXPECT_TRUE(h.host.errors.empty());
}

// A failed connection is the script's to handle: its text is the function's value.
TEST(NetworkFunctions, ConnectionArgumentsAndOptionWords) {
    NetHarness h;
    h.body(
        "set $r$ netuse X: \\\\srv\\data bob \"se cret\"\n print [$r$]\n"
        "set $r$ netusedel X:\n set $r$ netusedel Y: force persistent\n");
    h.net->failure = "The network name cannot be found (67)";
    h.body("set $r$ netuse LPT1 \\\\srv\\laser {printer persistent}\n print \"$r$\"\n");
    EXPECT_EQ(h.net->calls,
              "connect X:|\\\\srv\\data|bob|se cret\ndisconnect X:\ndisconnect Y: force forget\n"
              "connect LPT1|\\\\srv\\laser|| printer persistent\n");
    EXPECT_EQ(h.host.printed, (Texts{"[]", "The network name cannot be found (67)"}));
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(NetworkFunctions, WithoutConnectionsOrWithoutTheService) {
    NetHarness h;
    h.net->available = false;
    h.body("set $a$ connectedto X:\n set $a$ connectedhow X:\n");
    EXPECT_EQ(
        h.messages(),
        (Texts{"From Quiller : (connectedto) Connections are not available on this system",
               "From Quiller : (connectedhow) Connections are not available on this system"}));

    Harness none;  // a platform without the network service
    none.run(
        "sub main\n set $a$ getnethostname\n print [$a$]\n"
        " if isingroup users\n print never\n endif\nendsub\n");
    EXPECT_EQ(none.host.printed, Texts{"[]"});
}

TEST(GroupTest, NamesCompareWithoutCaseAndUnreadableGroupsAreFalse) {
    NetHarness h;
    h.body(
        "if isingroup users\n print yes1\n endif\n"
        "if isingroup \"OPS\"\n print yes2\n endif\n"
        "ifnot isingroup Admins\n print no3\n endif\n"
        "if isingroup\n print never\n endif\n");
    EXPECT_EQ(h.host.printed, (Texts{"yes1", "yes2", "no3"}));
    h.net->groups = std::nullopt;
    h.body("if isingroup users\n print never\n else\n print no\n endif\n");
    EXPECT_EQ(h.host.printed.back(), "no");
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(NetworkStatements, SendkeysAddprinterAndTheirFailures) {
    NetHarness h;
    h.body("sendkeys \"+a{TAB 2}\"\n addprinter \\\\srv\\laser\n");
    EXPECT_EQ(h.net->sent, (Keys{ch('a', kKeyShift), vk(0x09), vk(0x09)}));
    EXPECT_EQ(h.net->calls, "keys\nprinter \\\\srv\\laser\n");
    EXPECT_TRUE(h.host.errors.empty());

    h.net->failure = "Access is denied (5)";
    h.body("addprinter \\\\srv\\laser\n sendkeys x\n addprinter\n");
    EXPECT_EQ(h.messages(),
              (Texts{
                  "From Quiller : (addprinter) Couldn't connect the printer '\\\\srv\\laser'",
                  "From Windows : Access is denied (5)",
                  "From Quiller : (sendkeys) Couldn't send the keys",
                  "From Windows : Access is denied (5)",
                  "From Quiller : (addprinter) No printer was given",
              }));
}

}  // namespace
}  // namespace quiller::testing
