#include "explain/Wording.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <string_view>

#include "ConfigurationSources.hpp"
#include "messages/Text.hpp"

namespace s3vfs::explain {

namespace {

constexpr std::size_t longestShown = 200;  // bytes

bool isAlphanumeric(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string schemeOf(const std::string& text) {
    for (const std::string_view scheme : {"http://", "https://"})
        if (boost::algorithm::istarts_with(text, scheme)) return text.substr(0, scheme.size());
    return {};
}

bool isName(std::string_view text) {
    const auto mayStandThere = [](char c) {
        return isAlphanumeric(c) || static_cast<unsigned char>(c) >= 0x80 ||
               std::string_view("-._").find(c) != std::string_view::npos;
    };
    return !text.empty() && text.size() <= longestShown &&
           std::all_of(text.begin(), text.end(), mayStandThere);
}

bool isIpv6(const std::string& text) {
    in6_addr ignored{};
    return ::inet_pton(AF_INET6, text.c_str(), &ignored) == 1;
}

bool isHost(const std::string& text) {
    const bool bracketed = text.size() > 2 && text.front() == '[' && text.back() == ']';
    return isName(text) || isIpv6(bracketed ? text.substr(1, text.size() - 2) : text);
}

bool isPort(const std::string& text) {
    return !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string::npos;
}

bool isHostAndPort(const std::string& text) {
    const auto colon = text.rfind(':');
    if (colon == std::string::npos || isIpv6(text)) return isHost(text);
    return isHost(text.substr(0, colon)) && isPort(text.substr(colon + 1));
}

}  // namespace

std::string shown(const std::string& text) {
    return text.size() <= longestShown ? printable(text) : printable(text.substr(0, longestShown)) + "...";
}

std::string variableShown(const char* variable) {
    const std::string text = storage::s3provider::environmentText(variable);
    return text.empty() ? notSet : shown(text);
}

std::string addressShown(const std::string& text) {
    const std::string scheme = schemeOf(text);
    const std::string rest = text.substr(scheme.size());
    const auto end = std::min(rest.find_first_of("/?#"), rest.size());
    const auto at = rest.rfind('@');
    const bool hasUser = at != std::string::npos;
    if (hasUser && at > end) return "not shown, since it may hold a password";
    const std::string host = hasUser ? rest.substr(at + 1, end - at - 1) : rest.substr(0, end);
    if (!isHostAndPort(host)) return "no address";
    return scheme + (hasUser ? "...@" : "") + printable(host) + (rest.size() > end + 1 ? "/..." : "");
}

bool isAccessKeyOfAmazon(const std::string& text) {
    constexpr std::size_t length = 20;
    const auto isUsual = [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z'); };
    return text.size() == length && (text.rfind("AKIA", 0) == 0 || text.rfind("ASIA", 0) == 0) &&
           std::all_of(text.begin(), text.end(), isUsual);
}

std::string accessKeyShown(const std::string& accessKeyId) {
    if (!isAccessKeyOfAmazon(accessKeyId)) return "access key";
    return "access key ..." + accessKeyId.substr(accessKeyId.size() - 4);
}

std::string shownWithout(const std::vector<std::string>& secrets, std::string text) {
    for (const std::string& secret : secrets)
        if (!secret.empty()) boost::algorithm::replace_all(text, secret, "[secret]");
    return shown(text);
}

}  // namespace s3vfs::explain
