#include "webproxy/Address.hpp"

#include "text/PercentEncoding.hpp"

#include <boost/lexical_cast.hpp>

#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace webproxy {

namespace {

struct SchemePort {
    std::string_view scheme;
    int port;
};

constexpr SchemePort schemePorts[] = {{"http", 80}, {"https", 443}};

int portOf(const std::string& scheme) {
    for (const auto& [name, port] : schemePorts)
        if (name == scheme) return port;
    return 0;
}

int portFrom(const std::string& digits) {
    std::uint16_t port = 0;
    if (!boost::conversion::try_lexical_convert(digits, port))
        throw std::invalid_argument("a URL with a port beyond 65535");
    return port;
}

}  // namespace

Address addressOf(const standin::Uri& uri) {
    if (!uri.host || uri.host->empty()) throw std::invalid_argument("a URL without host");
    const bool bracketed = uri.host->front() == '[';
    return {bracketed ? uri.host->substr(1, uri.host->size() - 2) : standin::percentDecoded(*uri.host),
            uri.port && !uri.port->empty() ? portFrom(*uri.port) : portOf(uri.scheme)};
}

}  // namespace webproxy
