#pragma once

#include <string>

namespace foundation::storage::provider {

/// The address of something in a storage: an absolute IRI (RFC 3987) such as `s3://bucket/folder/file`.
///
/// It is kept in its normal form: the scheme in lower case, dot segments resolved, nothing percent-encoded
/// that needn't be. The host keeps its case. A value of this class never changes; any thread may read it.
class StorageIRI {
public:
    /// Throws std::invalid_argument for what isn't an absolute IRI. The message tells where, and never quotes
    /// the text, which may hold a password.
    explicit StorageIRI(const std::u16string& text);

    /// The address that a path leads to from another one, by the rules for relative references (RFC 3986,
    /// section 5.2): a path that starts with "/" begins at the root, any other beside the last segment of the
    /// base. The path is plain text: "%", "?" and "#" in it are ordinary characters. Query and fragment of
    /// the base are dropped. Throws std::invalid_argument for ill-formed UTF-16.
    StorageIRI(const StorageIRI& base, const std::u16string& path);

    /// Whether there is a host that isn't empty: neither `s3:///file` nor `s3:file` has one.
    bool hasHost() const noexcept { return !host_.empty(); }

    /// The host, percent-decoded, without user and port; an IPv6 address in its brackets. Empty without host.
    std::u16string getHost() const { return host_; }

    /// The path, percent-decoded, with the leading "/" that follows a host; empty when nothing does.
    std::u16string getPath() const { return path_; }

    /// The whole IRI, with percent-encoding only where a character may not stand for itself.
    std::u16string toString() const;

    /// Whether the normal forms are the same.
    friend bool operator==(const StorageIRI& a, const StorageIRI& b) noexcept { return a.uri_ == b.uri_; }
    friend bool operator!=(const StorageIRI& a, const StorageIRI& b) noexcept { return !(a == b); }

private:
    explicit StorageIRI(const std::string& uri);

    std::string uri_;  // the normal form in ASCII, all else percent-encoded UTF-8
    std::u16string host_;
    std::u16string path_;
};

}  // namespace foundation::storage::provider
