#pragma once

#include <foundation/storage/provider/StorageIRI.hpp>
#include <string>

namespace s3vfs {

/// What s3://BUCKET/KEY names, in UTF-8. The key is everything after the slash, as it stands; it may be
/// empty.
struct S3Address {
    std::string bucket;
    std::string key;

    std::string text() const { return "s3://" + bucket + "/" + key; }

    /// The IRI of the bucket, whatever characters its name has.
    foundation::storage::provider::StorageIRI bucketIri() const;

    /// The key as a path of the bucket's provider. It isn't part of an IRI, which would resolve dot segments.
    std::u16string path() const;
};

/// Throws UsageError when the text is no such address.
S3Address parseS3Address(const std::string& text);

/// The same for commands that need a file: without a key, or with one that ends with "/", it is a UsageError,
/// too.
S3Address parseFileAddress(const std::string& text);

}  // namespace s3vfs
