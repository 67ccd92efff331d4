#pragma once

#include <string>
#include <utility>
#include <vector>

#include "store/Store.hpp"

namespace s3server {

/// Where a listing goes on: behind one key, or behind all keys that start alike.
struct Position {
    std::string text;
    bool wholePrefix = false;
};

/// A position as a text that gives nothing away.
std::string continuationToken(const Position& position);
/// Throws S3Error InvalidArgument for a text that is no token.
Position parseContinuationToken(const std::string& token);

struct ListingQuery {
    std::string prefix;
    std::string delimiter;
    Position after;
    std::size_t maxKeys = 1000;
};

struct ListingPage {
    std::vector<std::pair<std::string, ObjectPointer>> contents;
    std::vector<std::string> commonPrefixes;
    bool truncated = false;
    /// Where the next page starts, if there is one.
    Position next;

    std::size_t size() const { return contents.size() + commonPrefixes.size(); }
};

/// One page of the keys that start with the prefix. Those that go on to the delimiter are rolled up into
/// one common prefix, which counts as one key.
ListingPage listPage(const Objects& objects, const ListingQuery& query);

}  // namespace s3server
