#pragma once

#include "text/Uri.hpp"

#include <string>

namespace webproxy {

/// Whom a URL leads to.
struct Address {
    std::string host;  ///< decoded; an IPv6 address without brackets
    int port;          ///< the scheme's own when the URL has none; 0 when it has none either
};

/// Throws std::invalid_argument for a URI without host, or with a port that can't be.
Address addressOf(const standin::Uri& uri);

}  // namespace webproxy
