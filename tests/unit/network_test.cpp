// The network and accounts service without a network: the address choice, the key syntax of
// sendkeys, and the functions, the group test and the statements over a fake service.
#include <gtest/gtest.h>

#include "scripted_host.hpp"
#include "services/network_keys.hpp"

namespace quiller::testing {
namespace {

// --- Address choice -------------------------------------------------------------------------

InterfaceAddress v4(std::string address, bool up = true, bool loopback = false) {
    return {std::move(address), true, up, loopback};
}

TEST(PickIpv4, SkipsLoopbackDownAndOtherFamilies) {
    const std::vector<InterfaceAddress> list = {
        v4("127.0.0.1", true, true),
        v4("10.0.0.9", false),
        {"fe80::1", false, true, false},
        v4("127.0.1.1"),
        v4("192.168.1.20"),
        v4("192.168.1.21"),
    };
    EXPECT_EQ(pick_ipv4_address(list), "192.168.1.20");
}

TEST(PickIpv4, SelfAssignedOnlyWhenNothingElse) {
    const std::vector<InterfaceAddress> both = {v4("169.254.3.4"), v4("172.16.0.5")};
    EXPECT_EQ(pick_ipv4_address(both), "172.16.0.5");
    const std::vector<InterfaceAddress> only = {v4("127.0.0.1", true, true), v4("169.254.3.4")};
    EXPECT_EQ(pick_ipv4_address(only), "169.254.3.4");
}

TEST(PickIpv4, EmptyWhenNone) {
    EXPECT_EQ(pick_ipv4_address({}), "");
    const std::vector<InterfaceAddress> list = {v4("127.0.0.1", true, true), v4("10.1.1.1", false)};
    EXPECT_EQ(pick_ipv4_address(list), "");
}

// --- Key syntax -----------------------------------------------------------------------------

KeyStroke ch(char32_t c, std::uint8_t m = 0) {
    return {c, 0, m};
}
KeyStroke vk(std::uint16_t code, std::uint8_t m = 0) {
    return {0, code, m};
}

std::vector<KeyStroke> keys(std::string_view text) {
    KeyParse p = parse_keys(text);
    EXPECT_EQ(p.error, "") << text;
    return p.keys;
}

std::string key_error(std::string_view text) {
    KeyParse p = parse_keys(text);
    EXPECT_TRUE(p.keys.empty()) << text;
    return p.error;
}

TEST(KeySyntax, PlainCharactersAndEnter) {
    EXPECT_EQ(keys("ab"), (std::vector{ch('a'), ch('b')}));
    EXPECT_EQ(keys("a~"), (std::vector{ch('a'), vk(0x0D)}));
    EXPECT_EQ(keys("é€"), (std::vector{ch(U'é'), ch(U'€')}));
    EXPECT_EQ(keys(""), std::vector<KeyStroke>{});
    EXPECT_EQ(keys("[]"), (std::vector{ch('['), ch(']')}));
}

TEST(KeySyntax, NamedKeysIgnoreCase) {
    EXPECT_EQ(keys("{ENTER}{tab}{Esc}{F1}{f12}{F24}"),
              (std::vector{vk(0x0D), vk(0x09), vk(0x1B), vk(0x70), vk(0x7B), vk(0x87)}));
    EXPECT_EQ(keys("{BS}{BKSP}{BACKSPACE}{DEL}{PGDN}{PGUP}"),
              (std::vector{vk(0x08), vk(0x08), vk(0x08), vk(0x2E), vk(0x22), vk(0x21)}));
    EXPECT_EQ(keys("{UP}{DOWN}{LEFT}{RIGHT}{HOME}{END}{INSERT}"),
              (std::vector{vk(0x26), vk(0x28), vk(0x25), vk(0x27), vk(0x24), vk(0x23), vk(0x2D)}));
}

TEST(KeySyntax, SpecialCharactersInBraces) {
    EXPECT_EQ(keys("{+}{^}{%}{~}{(}{)}"),
              (std::vector{ch('+'), ch('^'), ch('%'), ch('~'), ch('('), ch(')')}));
    EXPECT_EQ(keys("{{}{}}"), (std::vector{ch('{'), ch('}')}));
    EXPECT_EQ(keys("{[}{]}"), (std::vector{ch('['), ch(']')}));
    EXPECT_EQ(keys("{ }"), (std::vector{ch(' ')}));
}

TEST(KeySyntax, RepeatCounts) {
    EXPECT_EQ(keys("{x 5}"), std::vector<KeyStroke>(5, ch('x')));
    EXPECT_EQ(keys("{LEFT 3}"), std::vector<KeyStroke>(3, vk(0x25)));
    EXPECT_EQ(keys("{} 2}"), std::vector<KeyStroke>(2, ch('}')));
    EXPECT_EQ(keys("{{ 2}"), std::vector<KeyStroke>(2, ch('{')));
    EXPECT_EQ(keys("a{x 0}b"), (std::vector{ch('a'), ch('b')}));
    EXPECT_EQ(keys("{  2}"), std::vector<KeyStroke>(2, ch(' ')));
    EXPECT_EQ(keys("{y 1000}").size(), 1000u);
}

TEST(KeySyntax, ModifiersApplyToTheNextKey) {
    EXPECT_EQ(keys("+a"), (std::vector{ch('a', kKeyShift)}));
    EXPECT_EQ(keys("^c%{F4}"), (std::vector{ch('c', kKeyControl), vk(0x73, kKeyAlt)}));
    EXPECT_EQ(keys("+^{TAB}x"), (std::vector{vk(0x09, kKeyShift | kKeyControl), ch('x')}));
    EXPECT_EQ(keys("^~"), (std::vector{vk(0x0D, kKeyControl)}));
    EXPECT_EQ(keys("+{TAB 2}"), std::vector<KeyStroke>(2, vk(0x09, kKeyShift)));
}

TEST(KeySyntax, ModifiersOverGroups) {
    EXPECT_EQ(keys("+(ec)d"), (std::vector{ch('e', kKeyShift), ch('c', kKeyShift), ch('d')}));
    EXPECT_EQ(keys("^(a%(b))"),
              (std::vector{ch('a', kKeyControl), ch('b', kKeyControl | kKeyAlt)}));
    EXPECT_EQ(keys("(ab)"), (std::vector{ch('a'), ch('b')}));
}

TEST(KeySyntax, Errors) {
    EXPECT_EQ(key_error("ab{ENTER"), "'{' without its '}' in 'ab{ENTER'");
    EXPECT_EQ(key_error("{"), "'{' without its '}' in '{'");
    EXPECT_EQ(key_error("{FOO}"), "Unknown key {FOO} in '{FOO}'");
    EXPECT_EQ(key_error("{F25}"), "Unknown key {F25} in '{F25}'");
    EXPECT_EQ(key_error("{x y}"), "Repeat count 'y' is not 0 to 1000 in '{x y}'");
    EXPECT_EQ(key_error("{x 1001}"), "Repeat count '1001' is not 0 to 1000 in '{x 1001}'");
    EXPECT_EQ(key_error("{x }"), "Repeat count '' is not 0 to 1000 in '{x }'");
    EXPECT_EQ(key_error("a+"), "Modifier without a key in 'a+'");
    EXPECT_EQ(key_error("+(a^)"), "Modifier without a key in '+(a^)'");
    EXPECT_EQ(key_error("+(ab"), "'(' without its ')' in '+(ab'");
    EXPECT_EQ(key_error("ab)"), "')' without its '(' in 'ab)'");
    const std::string deep = std::string(33, '(') + "a" + std::string(33, ')');
    EXPECT_EQ(key_error(deep), "Groups nested too deep in '" + deep + "'");
    const std::string fine = std::string(32, '(') + "a" + std::string(32, ')');
    EXPECT_EQ(keys(fine), std::vector{ch('a')});
}

// --- Functions, the group test and the statements over a fake service ------------------------

class FakeNetwork final : public Network {
  public:
    bool has_connections = true;
    std::optional<std::vector<std::string>> groups = std::vector<std::string>{"Users", "Ops"};
    std::string failure;  // what the next connection operation answers
    NetConnection last_connection;
    std::string last_name;
    bool last_force = false, last_forget = false;
    std::vector<KeyStroke> sent;

    std::optional<std::vector<std::string>> user_groups() override { return groups; }
    std::string user_name() override { return "ada"; }
    std::string user_domain() override { return "CORVALE"; }
    std::string computer_name() override { return "WS01"; }
    std::string computer_domain() override { return "corvale.example"; }
    std::string host_name() override { return "ws01"; }
    std::string ip_address() override { return "10.0.0.7"; }
    std::optional<std::string> domain_controller(const std::string& d) override {
        return maybe("\\\\DC-" + d);
    }
    std::optional<std::string> connected_to(const std::string& l) override {
        return maybe("\\\\srv\\" + l);
    }
    std::optional<std::string> connected_how(const std::string&) override {
        return maybe("Corvale Network");
    }
    std::optional<std::string> connect(const NetConnection& c) override {
        last_connection = c;
        return maybe(failure);
    }
    std::optional<std::string> disconnect(const std::string& n, bool force, bool forget) override {
        last_name = n;
        last_force = force;
        last_forget = forget;
        return maybe(failure);
    }
    std::optional<std::string> add_printer(const std::string& p) override {
        last_name = p;
        return maybe(failure);
    }
    std::optional<std::string> send_keys(std::span<const KeyStroke> k) override {
        sent.assign(k.begin(), k.end());
        return maybe(failure);
    }

  private:
    std::optional<std::string> maybe(std::string text) const {
        if (!has_connections) return std::nullopt;
        return text;
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
    std::vector<std::string> messages() const {
        std::vector<std::string> lines;
        for (const ShownError& e : host.errors) {
            for (std::size_t at = 0; (at = e.text.find("From ", at)) != std::string::npos;) {
                const std::size_t end = e.text.find('\n', at);
                lines.push_back(e.text.substr(at, end - at));
                at = end;
            }
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
    EXPECT_EQ(h.host.printed, (std::vector<std::string>{"ada", "CORVALE", "WS01", "corvale.example",
                                                        "ws01", "10.0.0.7", "\\\\DC-Sales",
                                                        "\\\\srv\\X:", "Corvale Network"}));
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(NetworkFunctions, NetuseArgumentsAndOptionWords) {
    NetHarness h;
    h.body("set $r$ netuse X: \\\\srv\\data bob \"se cret\"\n print [$r$]\n");
    EXPECT_EQ(h.host.printed, std::vector<std::string>{"[]"});
    const NetConnection& c = h.net->last_connection;
    EXPECT_EQ(c.local, "X:");
    EXPECT_EQ(c.remote, "\\\\srv\\data");
    EXPECT_EQ(c.user, "bob");
    EXPECT_EQ(c.password, "se cret");
    EXPECT_FALSE(c.printer);
    EXPECT_FALSE(c.persistent);

    h.net->failure = "The network name cannot be found (67)";
    h.body("set $r$ netuse LPT1 \\\\srv\\laser {printer persistent}\n print \"$r$\"\n");
    EXPECT_EQ(h.host.printed.back(), "The network name cannot be found (67)");
    EXPECT_TRUE(h.net->last_connection.printer);
    EXPECT_TRUE(h.net->last_connection.persistent);
    EXPECT_EQ(h.net->last_connection.user, "");
    EXPECT_TRUE(h.host.errors.empty());  // a failed connection is the script's to handle
}

TEST(NetworkFunctions, NetusedelOptionWords) {
    NetHarness h;
    h.body("set $r$ netusedel X:\n");
    EXPECT_EQ(h.net->last_name, "X:");
    EXPECT_FALSE(h.net->last_force);
    EXPECT_FALSE(h.net->last_forget);
    h.body("set $r$ netusedel Y: force persistent\n");
    EXPECT_EQ(h.net->last_name, "Y:");
    EXPECT_TRUE(h.net->last_force);
    EXPECT_TRUE(h.net->last_forget);
}

TEST(NetworkFunctions, WarningsWhereTheSystemHasNoSuchThing) {
    NetHarness h;
    h.net->has_connections = false;
    h.body(
        "set $a$ getnetdc\n print [$a$]\n"
        "set $a$ netuse X: \\\\srv\\s\n print [$a$]\n"
        "set $a$ netuse LPT1: \\\\srv\\p printer\n"
        "set $a$ netusedel X:\n"
        "set $a$ connectedto X:\n"
        "set $a$ connectedhow X:\n");
    EXPECT_EQ(h.host.printed, (std::vector<std::string>{"[]", "[]"}));
    EXPECT_EQ(h.messages(),
              (std::vector<std::string>{
                  "From Quiller : (getnetdc) Domain controllers are not available on this system",
                  "From Quiller : (netuse) Drive connections are not available on this system",
                  "From Quiller : (netuse) Printer connections are not available on this system",
                  "From Quiller : (netusedel) Drive connections are not available on this system",
                  "From Quiller : (connectedto) Connections are not available on this system",
                  "From Quiller : (connectedhow) Connections are not available on this system",
              }));
}

TEST(GroupTest, NamesCompareWithoutCase) {
    NetHarness h;
    h.body(
        "if isingroup users\n print yes1\n endif\n"
        "if isingroup \"OPS\"\n print yes2\n endif\n"
        "ifnot isingroup Admins\n print no3\n endif\n"
        "if isingroup\n print never\n endif\n");
    EXPECT_EQ(h.host.printed, (std::vector<std::string>{"yes1", "yes2", "no3"}));
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(GroupTest, FalseWhenTheGroupsCantBeRead) {
    NetHarness h;
    h.net->groups = std::nullopt;
    h.body("if isingroup users\n print never\n else\n print no\n endif\n");
    EXPECT_EQ(h.host.printed, std::vector<std::string>{"no"});
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(NetworkStatements, SendkeysParsesAndSends) {
    NetHarness h;
    h.body("sendkeys \"+a{TAB 2}\"\n");
    EXPECT_EQ(h.net->sent, (std::vector{ch('a', kKeyShift), vk(0x09), vk(0x09)}));
    EXPECT_TRUE(h.host.errors.empty());

    h.body("sendkeys ab{NOPE}\n");
    ASSERT_EQ(h.host.errors.size(), 1u);
    EXPECT_EQ(h.messages(), std::vector<std::string>{
                                "From Quiller : (sendkeys) Unknown key {NOPE} in 'ab{NOPE}'"});
}

TEST(NetworkStatements, FailuresAndMissingService) {
    NetHarness h;
    h.body("addprinter \\\\srv\\laser\n");
    EXPECT_EQ(h.net->last_name, "\\\\srv\\laser");
    EXPECT_TRUE(h.host.errors.empty());

    h.net->failure = "Access is denied (5)";
    h.body("addprinter \\\\srv\\laser\n sendkeys x\n addprinter\n");
    EXPECT_EQ(h.messages(),
              (std::vector<std::string>{
                  "From Quiller : (addprinter) Couldn't connect the printer '\\\\srv\\laser'",
                  "From Windows : Access is denied (5)",
                  "From Quiller : (sendkeys) Couldn't send the keys",
                  "From Windows : Access is denied (5)",
                  "From Quiller : (addprinter) No printer was given",
              }));

    NetHarness none;
    none.net->has_connections = false;
    none.body("addprinter \\\\srv\\laser\n sendkeys x\n");
    EXPECT_EQ(none.messages(),
              (std::vector<std::string>{
                  "From Quiller : (addprinter) Printer connections are not available on this "
                  "system",
                  "From Quiller : (sendkeys) Keystrokes can't be sent on this system",
              }));
}

TEST(NetworkFunctions, NoServiceGivesEmptyTexts) {
    Harness h;  // a platform without the network service
    h.run(
        "sub main\n set $a$ getnethostname\n print [$a$]\n"
        " if isingroup users\n print never\n endif\nendsub\n");
    EXPECT_EQ(h.host.printed, std::vector<std::string>{"[]"});
}

}  // namespace
}  // namespace quiller::testing
