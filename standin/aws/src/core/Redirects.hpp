#pragma once

#include <string>

#include "core/Connection.hpp"

namespace standin::aws {

/// Host and port of a URL, or of a bare host or host:port, as for a Host header; empty when there is none.
std::string authorityOf(const std::string& urlOrHost);

/// The request that a redirect asks for: the same headers and body to another URL. The method becomes GET,
/// without the body, where browsers have it so: after 303, and after 301 or 302 to a POST. What proves the
/// caller's identity goes to the same scheme, host and port only.
WireRequest redirected(WireRequest request, int status, const std::string& url);

/// Sends a request and follows its redirects, five at most; one more is CURLE_TOO_MANY_REDIRECTS.
WireAnswer sendFollowing(Connection& connection, WireRequest request);

}  // namespace standin::aws
