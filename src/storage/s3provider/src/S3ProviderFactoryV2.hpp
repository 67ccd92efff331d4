#pragma once

#include <aws/s3/S3Client.h>

#include <foundation/storage/provider/PhysicalProviderFactory.hpp>
#include <foundation/thirdpartylibmgmt/Initializer.hpp>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace storage::s3provider {

/// Turns IRIs of the scheme s3 into providers. Remembers where buckets are and keeps one SDK client a region,
/// for as long as it lives; nothing is forgotten or made anew. Providers outlive it. Any thread may call any
/// operation at any time.
class S3ProviderFactoryV2 : public foundation::storage::provider::PhysicalProviderFactory {
public:
    using IProvider = foundation::storage::provider::IProvider;
    using StorageIRI = foundation::storage::provider::StorageIRI;

    /// Keeps the initializer, so that the SDK stays initialised, and never calls it.
    explicit S3ProviderFactoryV2(std::shared_ptr<foundation::thirdpartylibmgmt::Initializer> initializer);

    /// A new provider for the bucket that the IRI's host names, used as it stands. Settles the bucket's
    /// region first, which may send a request. Throws the framework's Exception (InvalidIRI, "no_bucket") for
    /// an IRI without host, and whatever making a client throws.
    std::shared_ptr<IProvider> createProvider(const StorageIRI& iri) override;

    /// The root of the IRI's bucket. Sends nothing.
    StorageIRI getRootIRI(const StorageIRI& iri) override;

    /// A client configured for the bucket's region; never null. The region is the one the user chose
    /// (regionFromEnvironment), else the one remembered for the bucket, else the one S3 tells: then
    /// GetBucketLocation goes out through the client of `ZR_AWS_GETLOCATION_REGION` ("us-east-2" by default).
    /// It is remembered when it is known; when it isn't, the client is that of the empty region.
    ///
    /// With `ZR_AWS_ENDPOINT_OVERRIDE` set: a new client for that endpoint each time, and no request; a
    /// region that the user chose goes into the client and is remembered there, too.
    std::shared_ptr<Aws::S3::S3Client> getClientForBucket(const std::string& bucket);

    /// The client of a region, made on first use; the empty region is the SDK's default. A region never gets
    /// two clients.
    std::shared_ptr<Aws::S3::S3Client> getClientForRegion(const std::string& region);

    /// The region remembered for a bucket; empty when none is.
    std::string getCachedBucketRegion(const std::string& bucket);

    void storeBucketRegion(std::string bucket, std::string region);

private:
    std::shared_ptr<Aws::S3::S3Client> makeClientForEndpoint(const std::string& endpoint,
                                                             const std::string& bucket);
    std::string resolveRegion(const std::string& bucket);

    std::shared_ptr<foundation::thirdpartylibmgmt::Initializer> m_initializer;
    std::map<std::string, std::string> m_regionCache;                         // by bucket
    std::map<std::string, std::shared_ptr<Aws::S3::S3Client>> m_clientCache;  // by region
    std::mutex m_cacheLock;                                                   // guards both
};

}  // namespace storage::s3provider
