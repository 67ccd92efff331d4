#pragma once

#include "webproxy/Address.hpp"

#include <string>

namespace webproxy {

/// Whether a list such as that in `no_proxy` has the address.
bool isListed(const std::string& list, const Address& address);

}  // namespace webproxy
