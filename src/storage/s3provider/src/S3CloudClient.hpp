#pragma once

#include <aws/core/client/AWSError.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/S3Errors.h>

#include <boost/optional.hpp>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <storage/cloudprovider/CloudClient.hpp>
#include <string>
#include <vector>

#include "CallTrace.hpp"
#include "DiagnosticRecord.hpp"
#include "S3ClientConfiguration.hpp"

namespace storage::s3provider {

/// The logger of the cloud client, channel "storage::s3provider::S3Client". Made on first use, it lives until
/// the library is unloaded. Any thread.
foundation::log::diagnostic_logger& s3ClientLogger();

/// One S3 bucket as the host's cloud client. An operation is one S3 request on the calling thread (`download`
/// repeats it; an error that nothing explains costs one GetBucketLocation more), and a failed one ends in one
/// exception of the storage::cloudprovider::CloudException family. `checkRootValidity` alone forgives, and
/// sends more. Keys are full object keys in UTF-8, used as they are.
///
/// Immutable after construction: any thread may call any operation at any time. A stream belongs to the
/// caller and must not serve two calls at once.
class S3CloudClient : public cloudprovider::CloudClient {
public:
    /// `client` must be configured for `configuredRegion`, which may be empty when it isn't known. Nothing is
    /// validated and nothing is sent.
    S3CloudClient(std::string bucket, std::shared_ptr<Aws::S3::S3Client> client,
                  S3ClientConfiguration configuration, std::string configuredRegion);

    /// The object's name, size in bytes and modification time; nothing when there is no such object (or no
    /// such bucket).
    boost::optional<cloudprovider::EntryInfo> stat(const std::string& key) override;

    /// Returns when the bucket is usable; one that refuses HeadBucket in the configured region is. Sends up
    /// to three requests. InvalidLocationException "bad_region": it lives in another region;
    /// "invalid_bucket": there is no such bucket, or its location is refused without a known reason. The path
    /// is not looked at.
    void checkRootValidity(const std::string& path) override;

    /// One page of the entries below `prefix`: objects, then common prefixes (size 0, the time of the
    /// listing). `continuationToken` is empty for the first page and comes back empty after the last; it is
    /// left alone when the request fails.
    std::vector<cloudprovider::EntryInfo> list(const std::string& prefix, std::string& continuationToken,
                                               const cloudprovider::ListOptions& options) override;

    /// Deletes one object. What S3 answers for a key that doesn't exist (success) is what this reports.
    void remove(const std::string& key) override;

    /// Writes bytes `start` to `end`, both included, of the object into `out`; the whole object when
    /// `start` >= `end`. Failed requests, whatever the failure, are repeated as the retry settings say, each
    /// after its pause. The number of bytes and the state of `out` are left for the caller to check.
    void download(const std::string& key, std::ostream& out, std::uint64_t start, std::uint64_t end) override;

    /// Stores everything the buffer of `in` holds, from its beginning, as the object. `size` is not read.
    void upload(const std::string& key, std::istream& in, std::uint64_t size) override;

    /// The stored object cut into parts of 5 MiB, without tags: what `reusePart` can copy from.
    /// ResourceNotFoundException without identifier when there is no such object.
    std::vector<cloudprovider::PartInfo> listParts(const std::string& key) override;

    /// Opens a multipart upload and returns its id. The second argument is not read.
    std::string startMultipartUpload(const std::string& key, const std::string& ignored) override;

    /// Sends everything the buffer of `in` holds as part `info.Index`; returns the part's ETag.
    /// boost::numeric::positive_overflow, here and below, when `Index` + 1 does not fit a part number.
    std::string uploadPart(const std::string& key, const std::string& uploadId,
                           const cloudprovider::PartInfo& info, std::istream& in) override;

    /// Copies `info.Size` bytes at `info.Offset` of the object now stored under the same key into part
    /// `info.Index`; returns the part's ETag.
    std::string reusePart(const std::string& key, const std::string& uploadId,
                          const cloudprovider::PartInfo& info) override;

    /// Throws the upload and its parts away.
    void abortMultipartUpload(const std::string& key, const std::string& uploadId) override;

    /// Makes the parts, by `Index` and `Tag` in the order given, the object.
    void completeMultipartUpload(const std::string& key, const std::string& uploadId,
                                 const std::vector<cloudprovider::PartInfo>& parts) override;

    ~S3CloudClient() override;

private:
    // The record of an operation's arguments: the bucket, then `pieces`, names (" key=") and values by turns.
    template <class... Pieces>
    void logArguments(const Pieces&... pieces) const {
        logRecord(s3ClientLogger(), LogArguments, " m_bucket=", m_bucket, pieces...);
    }

    // The result of a request that succeeded, which lives as long as `outcome`; raises the failure of any
    // other.
    template <class Outcome>
    const auto& resultOrRaise(const Outcome& outcome) {
        if (!outcome.IsSuccess()) raiseFailure(outcome.GetError());
        return outcome.GetResult();
    }

    // The end of every failed request: its record, then its exception.
    [[noreturn]] void raiseFailure(const Aws::Client::AWSError<Aws::S3::S3Errors>& error);

    [[noreturn]] void throwCloudError(const Aws::Client::AWSError<Aws::S3::S3Errors>& error);

    // Throws "bad_region" when the bucket lives elsewhere; returns the error when S3 wouldn't say where.
    std::optional<Aws::Client::AWSError<Aws::S3::S3Errors>> checkBucketRegion();

    S3ClientConfiguration m_configuration;
    std::string m_bucket;
    std::shared_ptr<Aws::S3::S3Client> m_client;
    std::string m_configuredRegion;
};

}  // namespace storage::s3provider
