#include "explain/Wording.hpp"

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <string_view>

#include "EnvironmentText.hpp"
#include "Text.hpp"

namespace s3vfs::explain {

namespace {

constexpr std::size_t longestShown = 200;  // bytes

// Those of Amazon have forty characters, and their access keys half as many.
constexpr std::size_t secretKeyLength = 40;
constexpr std::size_t shortestAccessKey = 8;

bool isAlphanumeric(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string schemeOf(const std::string& text) {
    for (const char* const scheme : {"http://", "https://"})
        if (text.rfind(scheme, 0) == 0) return scheme;
    return {};
}

bool isHostAndPort(const std::string& text) {
    const auto mayStandThere = [](char c) {
        return isAlphanumeric(c) || static_cast<unsigned char>(c) >= 0x80 ||
               std::string_view("-._:[]").find(c) != std::string_view::npos;
    };
    return !text.empty() && text.size() <= longestShown &&
           std::all_of(text.begin(), text.end(), mayStandThere);
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
    const std::string authority = rest.substr(0, rest.find_first_of("/?#"));
    const auto at = authority.rfind('@');
    const bool hasUser = at != std::string::npos;
    const std::string host = hasUser ? authority.substr(at + 1) : authority;
    if (!isHostAndPort(host)) return "no address";
    return scheme + (hasUser ? "...@" : "") + printable(host) +
           (rest.size() > authority.size() + 1 ? "/..." : "");
}

std::string accessKeyShown(const std::string& accessKeyId) {
    if (accessKeyId.size() < shortestAccessKey || accessKeyId.size() >= secretKeyLength) return "access key";
    const std::string end = accessKeyId.substr(accessKeyId.size() - 4);
    const auto mayBeShown = [](char c) { return isAlphanumeric(c) || c == '-' || c == '_'; };
    return std::all_of(end.begin(), end.end(), mayBeShown) ? "access key ..." + end : "access key";
}

std::string shownWithout(const std::vector<std::string>& secrets, std::string text) {
    for (const std::string& secret : secrets)
        if (!secret.empty()) boost::algorithm::replace_all(text, secret, "[secret]");
    return shown(text);
}

}  // namespace s3vfs::explain
