#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace standin::aws::s3 {

/// The parts of an absolute URL that an endpoint has.
struct Url {
    std::string scheme;            ///< "http" or "https"
    std::string host;              ///< as written, empty included; see isHostName()
    std::optional<unsigned> port;  ///< 0 stands for none after the colon, and for one above 65535
    std::string path;              ///< still encoded, without a slash at its end; empty: none
};

/// Nothing for a text that doesn't begin with "http://" or "https://" and an authority, has a query that
/// isn't empty, or has a port of other characters than digits. An IPv6 address in brackets gives no host
/// name.
std::optional<Url> splitUrl(std::string_view text);

/// Whether the text begins with "http://" or "https://".
bool hasHttpScheme(std::string_view text);

/// Host and port as in a Host header; the scheme's own port is left out.
std::string authorityOf(const Url& url);

std::string toString(const Url& url);

/// A DNS label: 1 to 63 letters, digits and hyphens, no hyphen at either end.
bool isHostLabel(std::string_view text);

/// DNS labels joined by dots; an IPv4 address is one.
bool isHostName(std::string_view text);

bool isIpv4Address(std::string_view text);

/// RFC 3986. What isn't % and two hexadecimal digits stays as it is.
std::string percentDecoded(std::string_view text);

}  // namespace standin::aws::s3
