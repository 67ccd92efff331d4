#pragma once

#include "operations/Operations.hpp"

namespace s3server {

/// The object that x-amz-copy-source names, conditions on it fulfilled. Throws S3Error.
struct CopySource {
    std::string bucket;
    std::string key;
    ObjectPointer object;
};
CopySource findCopySource(const Call& call);

/// Refuses what S3 won't copy in one request: more than 5 GiB.
void requireCopyableSize(std::uint64_t size);

/// The two fields of a copy's result, under that root.
Reply copyReply(std::string_view root, const std::string& etag, TimePoint lastModified);

}  // namespace s3server
