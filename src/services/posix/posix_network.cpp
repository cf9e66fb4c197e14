// The POSIX implementation of the network service.
#include "services/network.hpp"

namespace quiller {

std::unique_ptr<Network> make_network() { return std::make_unique<Network>(); }

}  // namespace quiller
