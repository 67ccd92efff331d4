#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "s3server/Headers.hpp"

namespace s3server {

/// The head of a request; its body travels apart.
struct Request {
    std::string method;
    /// As on the request line.
    std::string target;
    /// Names in lower case.
    Headers headers;

    /// From here on what locate() finds out.
    /// The target's path, still percent-encoded.
    std::string path;
    /// Names and values decoded, in the order of the target.
    std::vector<std::pair<std::string, std::string>> query;
    /// Decoded. Without a bucket the request is for the service, without a key for the bucket.
    std::string bucket;
    std::string key;

    std::string_view header(std::string_view name) const;
    bool hasHeader(std::string_view name) const;
    /// The first query parameter of that name; null if there is none.
    const std::string* parameter(std::string_view name) const;
    std::string parameterOr(std::string_view name, std::string_view otherwise) const;
};

/// Takes the target apart and finds bucket and key, by the path or by the host name ("Virtual hosting of
/// buckets" in the S3 user guide). Throws S3Error for a target that isn't one, with the parts found by then
/// in place.
void locate(Request& request, const std::vector<std::string>& hostNames);

/// The bucket that a Host header names; empty if the path names it.
std::string bucketOfHost(std::string_view hostHeader, const std::vector<std::string>& hostNames);

}  // namespace s3server
