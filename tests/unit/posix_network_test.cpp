// The POSIX network service on this machine: the current user's groups, the names, the address,
// and the mount table parser behind connectedto and connectedhow (the warnings of what POSIX
// lacks are in tests/scripts/network_posix_unavailable.prg).
#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "value/text.hpp"
#include "bindings/network.hpp"
#include "scripted_host.hpp"
#include "os/posix/posix_network.hpp"

namespace quiller::testing {
namespace {

TEST(PosixGroups, PrimaryGroupIsListedAndFoundWithoutCase) {
    const passwd* pw = ::getpwuid(::getuid());
    const group* g = pw ? ::getgrgid(pw->pw_gid) : nullptr;
    if (!g || !g->gr_name) GTEST_SKIP() << "the account has no group entry";
    const std::string name = g->gr_name;
    const auto groups = make_network()->user_groups();
    ASSERT_TRUE(groups.has_value());
    EXPECT_NE(std::find(groups->begin(), groups->end(), name), groups->end());

    Harness h;
    h.platform.network = make_network();
    Engine engine(h.host, h.platform, standard_language());
    EXPECT_TRUE(conditions::isingroup(engine, text::to_upper(name), {}));
    EXPECT_FALSE(conditions::isingroup(engine, "", {}));
    EXPECT_TRUE(h.host.errors.empty());
}

TEST(PosixNames, NamesAndAddress) {
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

    const std::string a = n->ip_address();  // dotted and not a loopback, or empty
    if (!a.empty()) {
        int octet[4] = {};
        char tail = 0;
        EXPECT_EQ(std::sscanf(a.c_str(), "%d.%d.%d.%d%c", &octet[0], &octet[1], &octet[2],
                              &octet[3], &tail),
                  4)
            << a;
        EXPECT_NE(octet[0], 127) << a;
    }
}

TEST(MountTable, EscapesLastMountAndMountPointForm) {
    const auto table = posix::parse_mount_table(
        "/dev/sda1 / ext4 rw,relatime 0 0\n"
        "//srv/My\\040Share /mnt/my\\040share cifs rw 0 0\n"
        "\n"
        "srv:/export /mnt/data nfs4 rw 0 0\n"
        "tmpfs /mnt/data tmpfs rw 0 0\n"
        "back\\134slash /mnt/b\\011tab xfs rw 0 0\n");
    ASSERT_EQ(table.size(), 5u);
    EXPECT_EQ(table[1].source + "|" + table[1].target, "//srv/My Share|/mnt/my share");
    EXPECT_EQ(table[4].source + "|" + table[4].target, "back\\slash|/mnt/b\ttab");
    const posix::MountEntry* data = posix::find_mount(table, "/mnt/data");
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(data->type, "tmpfs");
    EXPECT_EQ(posix::find_mount(table, "/mnt"), nullptr);

    EXPECT_EQ(posix::mount_point_of("/no/such/dir///"), "/no/such/dir");
    EXPECT_EQ(posix::mount_point_of("\\no\\such"), "/no/such");
    EXPECT_EQ(posix::mount_point_of("/"), "/");
    EXPECT_EQ(posix::mount_point_of(""), "");
}

}  // namespace
}  // namespace quiller::testing
