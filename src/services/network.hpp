// The network and accounts service: the user's groups, workstation and user names, domain and domain controller, host name and address, drive and printer connections, keystrokes to the active window.
#pragma once

#include <memory>

namespace quiller {

class Network {
public:
    virtual ~Network() = default;
};

// The implementation for the platform this build targets.
std::unique_ptr<Network> make_network();

}  // namespace quiller
