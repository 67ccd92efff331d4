#include "operations/Conditions.hpp"

#include <algorithm>

#include "text/Text.hpp"

namespace s3server {
namespace {

bool namesEtag(std::string_view header, const std::string& etag) {
    const auto pieces = split(header, ',');
    return std::any_of(pieces.begin(), pieces.end(), [&etag](std::string_view piece) {
        auto tag = trimmed(piece);
        if (startsWith(tag, "W/")) tag.remove_prefix(2);
        return tag == "*" || tag == etag || tag == '"' + etag + '"';
    });
}

}  // namespace

Verdict judge(const Request& request, const Object& object, std::string_view prefix) {
    const auto header = [&](std::string_view name) {
        return findHeader(request.headers, std::string(prefix).append(name));
    };
    if (const std::string* const tags = header("if-match")) {
        if (!namesEtag(*tags, object.etag)) return Verdict::Failed;
    } else if (const std::string* const text = header("if-unmodified-since")) {
        const auto date = parseHttpDate(*text);
        if (date && object.lastModified > *date) return Verdict::Failed;
    }
    if (const std::string* const tags = header("if-none-match")) {
        if (namesEtag(*tags, object.etag)) return Verdict::NotModified;
    } else if (const std::string* const text = header("if-modified-since")) {
        const auto date = parseHttpDate(*text);
        if (date && object.lastModified <= *date) return Verdict::NotModified;
    }
    return Verdict::Go;
}

}  // namespace s3server
