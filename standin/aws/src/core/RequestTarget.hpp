#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace standin::aws {

using QueryParameters = std::vector<std::pair<std::string, std::string>>;

/// A path and query, percent-encoded twice over: as the request line has them, and as the signature covers
/// them. S3 signs what it has decoded and encoded again, so the two need not be the same text.
struct RequestTarget {
    std::string wirePath;
    std::string wireQuery;  ///< without "?"; empty: none
    std::string canonicalPath;
    std::string canonicalQuery;

    /// Path and query as on the request line.
    std::string onWire() const;
};

/// `path` and `query` are not encoded. Every byte of the path keeps its place: empty and dot segments too.
/// `subresource` is a query name without "="; empty: none.
RequestTarget encodeTarget(std::string_view path, std::string_view subresource, const QueryParameters& query);

}  // namespace standin::aws
