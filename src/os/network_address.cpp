// The choice of the address `getnetipaddress` reports, shared by both platforms.
#include "os/network.hpp"

namespace quiller {
namespace {

bool usable(const InterfaceAddress& a) {
    return a.ipv4 && a.up && !a.loopback && !a.address.empty() && !a.address.starts_with("127.");
}

bool self_assigned(const InterfaceAddress& a) {
    return a.address.starts_with("169.254.");
}

}  // namespace

std::string pick_ipv4_address(std::span<const InterfaceAddress> addresses) {
    const InterfaceAddress* fallback = nullptr;
    for (const InterfaceAddress& a : addresses) {
        if (!usable(a)) continue;
        if (!self_assigned(a)) return a.address;
        if (!fallback) fallback = &a;
    }
    return fallback ? fallback->address : std::string();
}

}  // namespace quiller
