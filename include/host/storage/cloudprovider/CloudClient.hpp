#pragma once

#include "storage/cloudprovider/CloudRecords.hpp"

#include <boost/optional/optional.hpp>

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace storage::cloudprovider {

/// Access to the objects of one bucket.
///
/// Keys and prefixes are full object keys in UTF-8, used as given; there are no folders at this level.
/// Every operation works on the calling thread until it is done, any number of threads may call one client
/// at once, and failures are exceptions of the CloudException family.
///
/// The order of the declarations, the destructor last, is part of the binary interface.
class CloudClient {
public:
    /// The object of exactly this key; none if it doesn't exist.
    virtual boost::optional<EntryInfo> stat(const std::string& key) = 0;

    /// Returns if the bucket can be used, else throws.
    virtual void checkRootValidity(const std::string& path) = 0;

    /// One page of the entries below a prefix: objects first, then the common prefixes that a delimiter
    /// makes. The token is empty for the first page, and comes back empty after the last.
    virtual std::vector<EntryInfo> list(const std::string& prefix, std::string& continuationToken,
                                        const ListOptions& options) = 0;

    /// Removes the object of exactly this key.
    virtual void remove(const std::string& key) = 0;

    /// Writes the bytes `start` to `end`, both included, or the whole object when start >= end. A failure of
    /// `out` shows in its state only.
    virtual void download(const std::string& key, std::ostream& out, std::uint64_t start,
                          std::uint64_t end) = 0;

    /// Makes or replaces an object from what the stream holds; `size` is the number of bytes announced.
    virtual void upload(const std::string& key, std::istream& in, std::uint64_t size) = 0;

    /// The parts of a stored object that reusePart() can copy, in order, without tags.
    virtual std::vector<PartInfo> listParts(const std::string& key) = 0;

    /// Begins an upload in parts and returns its id. It stays open until completed or aborted.
    virtual std::string startMultipartUpload(const std::string& key, const std::string& reserved) = 0;

    /// Uploads all that the stream holds as the part `info.Index`; returns the part's tag.
    virtual std::string uploadPart(const std::string& key, const std::string& uploadId, const PartInfo& info,
                                   std::istream& in) = 0;

    /// Makes a part out of the same bytes of the stored object; returns the part's tag.
    virtual std::string reusePart(const std::string& key, const std::string& uploadId,
                                  const PartInfo& info) = 0;

    /// Drops the upload and its parts.
    virtual void abortMultipartUpload(const std::string& key, const std::string& uploadId) = 0;

    /// Turns the parts, in the order given, into the object.
    virtual void completeMultipartUpload(const std::string& key, const std::string& uploadId,
                                         const std::vector<PartInfo>& parts) = 0;

    virtual ~CloudClient() = default;
};

}  // namespace storage::cloudprovider
