#pragma once

#include <string>
#include <string_view>

#include "faults/FaultPlan.hpp"
#include "faults/RequestLog.hpp"
#include "http/Wire.hpp"

namespace s3server {

/// What control requests look at and change.
struct Controlled {
    FaultPlan& faults;
    RequestLog& log;
};

struct ControlResponse {
    int status;
    /// Lines of plain text.
    std::string body;
    /// For status 405.
    std::string_view allowed = {};
};

/// Performs one control request. /faults: GET lists what is planned, a fault a line; POST plans those of the
/// body, too, and PUT those instead, all of them or none; DELETE plans none. /requests: GET counts, with a
/// line of operation, status and number each; DELETE counts from 0. Whatever was asked, a success tells what
/// is now.
ControlResponse control(std::string_view method, std::string_view target, std::string_view body,
                        const Controlled& controlled);

/// Serves the control requests of one connection until it ends, HTTP/1.1 (RFC 9112).
void serveControl(Wire& wire, const Controlled& controlled);

}  // namespace s3server
