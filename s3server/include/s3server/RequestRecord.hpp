#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "s3server/Headers.hpp"

namespace s3server {

/// What the server saw of one request, and what it answered.
struct RequestRecord {
    /// The operation's name in the S3 API, such as "GetObject"; empty for a request that is none.
    std::string operation;
    std::string method;
    /// As on the request line, still percent-encoded.
    std::string target;
    /// Decoded; from the host name or the path, however the request named it.
    std::string bucket;
    std::string key;
    Headers headers;
    /// Bytes of the body that arrived, transfer coding removed, chunk signatures included.
    std::uint64_t bodyBytes = 0;
    /// Bytes of the answer's body that were sent; for an answer under way, that will be.
    std::uint64_t responseBytes = 0;
    /// 0 for a request that was left without an answer.
    int status = 0;
    /// Counts the server's connections from 1; equal numbers mean the same connection.
    std::uint64_t connection = 0;

    /// The first header of that name, given in lower case.
    std::optional<std::string> header(std::string_view name) const;
};

/// How many requests there were of each operation, empty for what is none, with each status, 0 for no answer.
using RequestCounts = std::map<std::pair<std::string, int>, std::uint64_t>;

}  // namespace s3server
