#include "core/RequestTarget.hpp"

#include <algorithm>

#include "core/PercentEncoding.hpp"

namespace standin::aws {
namespace {

/// Sorted by encoded name, then by encoded value.
QueryParameters encodeAndSort(const QueryParameters& query) {
    QueryParameters encoded;
    for (const auto& [name, value] : query) {
        encoded.emplace_back(encodeQueryText(name), encodeQueryText(value));
    }
    std::sort(encoded.begin(), encoded.end());
    return encoded;
}

std::string joinQuery(const QueryParameters& encoded) {
    std::string text;
    for (const auto& [name, value] : encoded) {
        if (!text.empty()) text += '&';
        text.append(name).append("=").append(value);
    }
    return text;
}

}  // namespace

std::string RequestTarget::onWire() const {
    return wireQuery.empty() ? wirePath : wirePath + '?' + wireQuery;
}

RequestTarget encodeTarget(std::string_view path, std::string_view subresource,
                           const QueryParameters& query) {
    const std::string_view rooted = path.empty() ? "/" : path;
    QueryParameters all = encodeAndSort(query);
    std::string wireQuery = joinQuery(all);
    if (!subresource.empty()) {
        const std::string name = encodeQueryText(subresource);
        wireQuery = wireQuery.empty() ? name : name + '&' + wireQuery;
        all.emplace_back(name, "");
        std::sort(all.begin(), all.end());
    }
    return {encodeWirePath(rooted), std::move(wireQuery), encodeCanonicalPath(rooted), joinQuery(all)};
}

}  // namespace standin::aws
