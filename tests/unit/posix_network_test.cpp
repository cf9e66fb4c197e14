// The POSIX network service on this machine: the current user's groups, the names, the address,
// and the mount table behind connectedto and connectedhow.
#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "common/text.hpp"
#include "expr/condition.hpp"
#include "scripted_host.hpp"
#include "services/posix/posix_network.hpp"

namespace quiller::testing {
namespace {

std::string primary_group_name() {
    const passwd* pw = ::getpwuid(::getuid());
    const group* g = pw ? ::getgrgid(pw->pw_gid) : nullptr;
    return g && g->gr_name ? g->gr_name : "";
}

struct PosixNetHarness : Harness {
    PosixNetHarness() { platform.network = make_network(); }
    bool in_group(const std::string& name) {
        Engine engine(host, platform);
        return user_is_in_group(engine, name);
    }
};

TEST(PosixGroups, PrimaryGroupIsFoundWithoutCase) {
    const std::string name = primary_group_name();
    if (name.empty()) GTEST_SKIP() << "the account has no group entry";
    PosixNetHarness h;
    EXPECT_TRUE(h.in_group(name));
    EXPECT_TRUE(h.in_group(text::to_upper(name)));
    EXPECT_FALSE(h.in_group("no-such-group-7f3a9c"));
    EXPECT_FALSE(h.in_group(""));
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(PosixGroups, ListHoldsThePrimaryGroup) {
    const std::string name = primary_group_name();
    if (name.empty()) GTEST_SKIP() << "the account has no group entry";
    const auto groups = make_network()->user_groups();
    ASSERT_TRUE(groups.has_value());
    EXPECT_NE(std::find(groups->begin(), groups->end(), name), groups->end());
}

TEST(PosixNames, HostAndComputerNames) {
    auto n = make_network();
    char buffer[256] = {};
    ASSERT_EQ(::gethostname(buffer, sizeof buffer - 1), 0);
    const std::string host(buffer);
    EXPECT_EQ(n->host_name(), host.substr(0, host.find('.')));
    EXPECT_EQ(n->computer_name(), text::to_upper(n->host_name()));
    const std::string domain = n->computer_domain();
    EXPECT_EQ(n->user_domain(), domain.empty() ? n->computer_name() : domain);
    if (const passwd* pw = ::getpwuid(::getuid())) {
        EXPECT_EQ(n->user_name(), pw->pw_name);
    }
}

TEST(PosixNames, AddressIsDottedAndNotLoopback) {
    const std::string a = make_network()->ip_address();
    if (a.empty()) GTEST_SKIP() << "no interface with an IPv4 address is up";
    int parts[4] = {};
    char tail = 0;
    ASSERT_EQ(
        std::sscanf(a.c_str(), "%d.%d.%d.%d%c", &parts[0], &parts[1], &parts[2], &parts[3], &tail),
        4)
        << a;
    EXPECT_NE(parts[0], 127);
}

TEST(PosixNames, NothingForWindowsOnlyOperations) {
    auto n = make_network();
    EXPECT_FALSE(n->domain_controller(""));
    NetConnection c;
    c.local = "X:";
    c.remote = "\\\\srv\\share";
    EXPECT_FALSE(n->connect(c));
    EXPECT_FALSE(n->disconnect("X:", false, false));
    EXPECT_FALSE(n->add_printer("\\\\srv\\laser"));
    EXPECT_FALSE(n->send_keys({}));
}

TEST(MountTable, ParsesEscapesAndTakesTheLastMount) {
    const auto table = posix::parse_mount_table(
        "/dev/sda1 / ext4 rw,relatime 0 0\n"
        "//srv/My\\040Share /mnt/my\\040share cifs rw 0 0\n"
        "\n"
        "srv:/export /mnt/data nfs4 rw 0 0\n"
        "tmpfs /mnt/data tmpfs rw 0 0\n"
        "back\\134slash /mnt/b\\011tab xfs rw 0 0\n");
    ASSERT_EQ(table.size(), 5u);
    EXPECT_EQ(table[1].source, "//srv/My Share");
    EXPECT_EQ(table[1].target, "/mnt/my share");
    EXPECT_EQ(table[4].source, "back\\slash");
    EXPECT_EQ(table[4].target, "/mnt/b\ttab");
    const posix::MountEntry* data = posix::find_mount(table, "/mnt/data");
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->type, "tmpfs");
    EXPECT_EQ(posix::find_mount(table, "/mnt"), nullptr);
}

TEST(MountTable, MountPointForm) {
    EXPECT_EQ(posix::mount_point_of("/no/such/dir///"), "/no/such/dir");
    EXPECT_EQ(posix::mount_point_of("\\no\\such"), "/no/such");
    EXPECT_EQ(posix::mount_point_of("/"), "/");
    EXPECT_EQ(posix::mount_point_of(""), "");
}

TEST(MountTable, ConnectedToAndHowOnThisSystem) {
    const auto table = posix::read_mount_table();
    const posix::MountEntry* root = posix::find_mount(table, "/");
    if (!root) GTEST_SKIP() << "no mount table";
    auto n = make_network();
    EXPECT_EQ(n->connected_to("/"), root->source);
    EXPECT_EQ(n->connected_how("/"), root->type);
    EXPECT_EQ(n->connected_to("/no/such/dir"), "");
    EXPECT_EQ(n->connected_how(""), "");
    if (const posix::MountEntry* proc = posix::find_mount(table, "/proc")) {
        EXPECT_EQ(n->connected_how("/proc/"), proc->type);
        EXPECT_EQ(n->connected_to("/proc/self"), "");  // a directory inside a mount
    }
}

}  // namespace
}  // namespace quiller::testing
