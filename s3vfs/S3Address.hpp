#pragma once

#include <string>

namespace s3vfs {

/// What s3://BUCKET/KEY names. The key is everything after the slash, as it stands; it may be empty.
struct S3Address {
    std::string bucket;
    std::string key;

    std::string text() const { return "s3://" + bucket + "/" + key; }
};

/// Throws UsageError when the text is no such address.
S3Address parseS3Address(const std::string& text);

/// The same for commands that need an object: an empty key is a UsageError, too.
S3Address parseObjectAddress(const std::string& text);

}  // namespace s3vfs
