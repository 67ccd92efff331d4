#pragma once

#include <cstdint>

#include "faults/FaultPlan.hpp"
#include "faults/RequestLog.hpp"
#include "http/Wire.hpp"
#include "operations/Service.hpp"

namespace s3server {

/// What the connections of a server share.
struct Backend {
    Service& service;
    FaultPlan& faults;
    RequestLog& log;
};

/// Serves the requests of one connection until it ends, HTTP/1.1 (RFC 9112).
void serveConnection(Wire& wire, const Backend& backend, std::uint64_t connection);

}  // namespace s3server
