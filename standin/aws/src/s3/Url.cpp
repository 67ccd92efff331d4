#include "s3/Url.hpp"

#include <algorithm>
#include <charconv>

namespace standin::aws::s3 {

namespace {

constexpr std::string_view httpPrefix = "http://";
constexpr std::string_view httpsPrefix = "https://";

bool startsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// Locale-independent, unlike the functions of <cctype>.
bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

template <typename Number>
std::optional<Number> wholeNumber(std::string_view text, int base) {
    Number value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

bool isNumeric(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

unsigned portNumber(std::string_view digits) {
    const auto number = wholeNumber<unsigned>(digits, 10);
    return number && *number <= 65535 ? *number : 0;
}

unsigned defaultPort(const std::string& scheme) {
    return scheme == "http" ? 80 : 443;
}

std::string_view withoutEmptyQuery(std::string_view text) {
    return !text.empty() && text.back() == '?' ? text.substr(0, text.size() - 1) : text;
}

std::string_view withoutSlashesAtEnd(std::string_view text) {
    return text.substr(0, text.find_last_not_of('/') + 1);
}

template <typename Predicate>
bool allParts(std::string_view text, char separator, Predicate predicate) {
    for (auto end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
        if (!predicate(text.substr(0, end))) return false;
        text.remove_prefix(end + 1);
    }
    return predicate(text);
}

}  // namespace

bool hasHttpScheme(std::string_view text) {
    return startsWith(text, httpPrefix) || startsWith(text, httpsPrefix);
}

std::optional<Url> splitUrl(std::string_view text) {
    text = withoutEmptyQuery(text);
    if (!hasHttpScheme(text) || text.find('?') != std::string_view::npos) return std::nullopt;
    Url url;
    url.scheme = startsWith(text, httpPrefix) ? "http" : "https";
    text.remove_prefix(url.scheme.size() + 3);

    const std::string_view authority = text.substr(0, text.find('/'));
    if (authority.empty()) return std::nullopt;
    url.path = withoutSlashesAtEnd(text.substr(authority.size()));
    const auto colon = authority.find(':');
    url.host = authority.substr(0, colon);
    if (colon == std::string_view::npos) return url;
    const std::string_view port = authority.substr(colon + 1);
    if (!isNumeric(port) && url.host != "[") return std::nullopt;
    url.port = portNumber(port);
    return url;
}

std::string authorityOf(const Url& url) {
    const bool named = url.port && *url.port != defaultPort(url.scheme);
    return named ? url.host + ":" + std::to_string(*url.port) : url.host;
}

std::string toString(const Url& url) {
    return url.scheme + "://" + authorityOf(url) + url.path;
}

bool isHostLabel(std::string_view text) {
    return !text.empty() && text.size() <= 63 && text.front() != '-' && text.back() != '-' &&
           std::all_of(text.begin(), text.end(), [](char c) { return isLetterOrDigit(c) || c == '-'; });
}

bool isHostName(std::string_view text) {
    return allParts(text, '.', isHostLabel);
}

bool isIpv4Address(std::string_view text) {
    return std::count(text.begin(), text.end(), '.') == 3 && allParts(text, '.', [](std::string_view part) {
               const auto number = wholeNumber<unsigned>(part, 10);
               return part.size() <= 3 && number && *number <= 255;
           });
}

std::string percentDecoded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = text[i] == '%' && i + 2 < text.size()
                              ? wholeNumber<unsigned char>(text.substr(i + 1, 2), 16)
                              : std::nullopt;
        result += byte ? static_cast<char>(*byte) : text[i];
        if (byte) i += 2;
    }
    return result;
}

}  // namespace standin::aws::s3
