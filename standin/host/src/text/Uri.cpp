#include "text/Uri.hpp"

#include "text/PercentEncoding.hpp"

#include <uriparser/Uri.h>

#include <memory>
#include <new>

namespace standin {

namespace {

using UriMembers = std::unique_ptr<UriUriA, decltype(&uriFreeUriMembersA)>;

// All but the host, whose case means something to some schemes.
constexpr unsigned normalizedParts = URI_NORMALIZE_SCHEME | URI_NORMALIZE_USER_INFO | URI_NORMALIZE_PATH |
                                     URI_NORMALIZE_QUERY | URI_NORMALIZE_FRAGMENT;

bool isSet(const UriTextRangeA& range) {
    return range.first != nullptr;
}

std::string textOf(const UriTextRangeA& range) {
    return isSet(range) ? std::string(range.first, range.afterLast) : std::string();
}

std::optional<std::string> partOf(const UriTextRangeA& range) {
    return isSet(range) ? std::optional(textOf(range)) : std::nullopt;
}

// A name that is percent-encoded without need is the same name.
std::optional<std::string> hostOf(const UriUriA& uri) {
    if (!isSet(uri.hostText)) return std::nullopt;
    const bool isLiteral = uri.hostData.ip6 != nullptr || isSet(uri.hostData.ipFuture);
    return isLiteral ? "[" + textOf(uri.hostText) + "]"
                     : percentEncoded(percentDecoded(textOf(uri.hostText)), hostMarks);
}

std::string pathOf(const UriUriA& uri) {
    std::string path = uri.absolutePath != URI_FALSE ? "/" : "";
    for (const UriPathSegmentA* segment = uri.pathHead; segment != nullptr; segment = segment->next) {
        if (segment != uri.pathHead || isSet(uri.hostText)) path += '/';
        path += textOf(segment->text);
    }
    return path;
}

std::string authorityOf(const Uri& uri) {
    return (uri.userInfo ? *uri.userInfo + "@" : "") + *uri.host + (uri.port ? ":" + *uri.port : "");
}

}  // namespace

Uri parseUri(std::string_view text) {
    UriUriA parsed;
    const char* error = text.data();
    const int result = uriParseSingleUriExA(&parsed, text.data(), text.data() + text.size(), &error);
    if (result == URI_ERROR_SYNTAX)
        throw UriSyntaxError("unexpected character", static_cast<std::size_t>(error - text.data()));
    if (result != URI_SUCCESS) throw std::bad_alloc();
    const UriMembers members(&parsed, &uriFreeUriMembersA);
    if (!isSet(parsed.scheme)) throw UriSyntaxError("no scheme", 0);
    if (uriNormalizeSyntaxExA(&parsed, normalizedParts) != URI_SUCCESS) throw std::bad_alloc();

    return {textOf(parsed.scheme), partOf(parsed.userInfo), hostOf(parsed),         partOf(parsed.portText),
            pathOf(parsed),        partOf(parsed.query),    partOf(parsed.fragment)};
}

std::string toString(const Uri& uri) {
    std::string text = uri.scheme + ":";
    if (uri.host) text += "//" + authorityOf(uri);
    // Without a host, two leading slashes would make one.
    if (!uri.host && uri.path.compare(0, 2, "//") == 0) text += "/.";
    text += uri.path;
    if (uri.query) text += "?" + *uri.query;
    if (uri.fragment) text += "#" + *uri.fragment;
    return text;
}

}  // namespace standin
