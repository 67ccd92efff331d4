#include "webproxy/NoProxy.hpp"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/algorithm/string/trim.hpp>

#include <algorithm>
#include <vector>

namespace webproxy {

namespace {

bool isSeparator(char c) {
    return c == ',' || c == ' ' || c == '\t';
}

struct Pattern {
    std::string name;
    std::string port;  // empty: any
};

Pattern patternOf(const std::string& entry) {
    const auto colon = entry.rfind(':');
    if (colon == std::string::npos) return {entry, ""};
    // In an IPv6 address without brackets, what follows the last colon is no port.
    const bool isPort = entry.find(':') == colon || entry[colon - 1] == ']';
    return isPort ? Pattern{entry.substr(0, colon), entry.substr(colon + 1)} : Pattern{entry, ""};
}

std::string bareName(const std::string& name) {
    const std::string bare = boost::trim_copy_if(name, boost::is_any_of("[]."));
    return boost::starts_with(bare, "*.") ? bare.substr(2) : bare;
}

bool isIpv4(const std::string& host) {
    return boost::all(host, boost::is_any_of("0123456789."));
}

bool matchesName(const std::string& host, const std::string& name) {
    if (name.empty()) return false;
    return boost::iequals(host, name) || (!isIpv4(host) && boost::iends_with(host, "." + name));
}

bool matches(const std::string& entry, const Address& address) {
    if (entry == "*") return true;
    const auto [name, port] = patternOf(entry);
    return (port.empty() || port == std::to_string(address.port)) &&
           matchesName(bareName(address.host), bareName(name));
}

}  // namespace

bool isListed(const std::string& list, const Address& address) {
    std::vector<std::string> entries;
    boost::split(entries, list, isSeparator, boost::token_compress_on);
    return std::any_of(entries.begin(), entries.end(),
                       [&address](const std::string& entry) { return matches(entry, address); });
}

}  // namespace webproxy
