#pragma once

#include <string>

#include "core/Connection.hpp"

namespace standin::aws {

/// The host of a URL, even of one that is malformed otherwise; empty for a relative one, and for one that
/// names a user, whose end not everyone sees in the same place.
std::string hostOf(std::string_view url);

/// Another host, with the port of `authority`.
std::string withHost(const std::string& authority, std::string_view host);

/// The request that a redirect asks for: the same headers and body to another URL. A body makes the method
/// GET and is dropped where browsers have it so: after 303, and after 301 or 302 to a POST. What proves the
/// caller's identity goes to the same scheme, host and port only.
WireRequest redirected(WireRequest request, int status, const std::string& url);

/// Sends a request and follows its redirects, five at most; one more is CURLE_TOO_MANY_REDIRECTS.
WireAnswer sendFollowing(Connection& connection, WireRequest request);

}  // namespace standin::aws
