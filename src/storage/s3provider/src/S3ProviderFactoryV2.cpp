#include "S3ProviderFactoryV2.hpp"

#include <fl/i18n.hpp>
#include <foundation/storage/provider/Exception.hpp>
#include <storage/cloudprovider/buildCloudProvider.hpp>
#include <utility>

#include "AwsS3ClientFactory.hpp"
#include "ConfigurationSources.hpp"
#include "S3CloudClient.hpp"

namespace storage::s3provider {

namespace provider = foundation::storage::provider;

S3ProviderFactoryV2::S3ProviderFactoryV2(
    std::shared_ptr<foundation::thirdpartylibmgmt::Initializer> initializer)
    : m_initializer(std::move(initializer)) {}

std::shared_ptr<provider::IProvider> S3ProviderFactoryV2::createProvider(const StorageIRI& iri) {
    if (!iri.hasHost()) {
        provider::Exception error(provider::ErrorCode::InvalidIRI, iri);
        error.addContext(provider::ExceptionContext(u"no_bucket"));
        throw error;
    }
    const std::string bucket = fl::i18n::ustring_to_utf8(iri.getHost());
    const auto client = getClientForBucket(bucket);
    const std::string region = getCachedBucketRegion(bucket);
    const std::int64_t attempts = getDataAttempts();
    const S3ClientConfiguration retries{attempts, getRetryTimeMs()};
    return cloudprovider::buildCloudProvider(std::make_shared<S3CloudClient>(bucket, client, retries, region),
                                             cloudprovider::FolderPolicy::Implicit, true);
}

provider::StorageIRI S3ProviderFactoryV2::getRootIRI(const StorageIRI& iri) {
    return {iri, u"/"};
}

std::shared_ptr<Aws::S3::S3Client> S3ProviderFactoryV2::getClientForBucket(const std::string& bucket) {
    const std::string endpoint = endpointOverride();
    if (!endpoint.empty()) return makeClientForEndpoint(endpoint, bucket);
    const std::string region = resolveRegion(bucket);
    if (!region.empty()) storeBucketRegion(bucket, region);
    return getClientForRegion(region);
}

std::shared_ptr<Aws::S3::S3Client> S3ProviderFactoryV2::makeClientForEndpoint(const std::string& endpoint,
                                                                              const std::string& bucket) {
    auto configuration = makeClientConfiguration();
    configuration.endpointOverride = endpoint;
    const std::string region = regionFromEnvironment();
    if (!region.empty()) {
        configuration.region = region;
        storeBucketRegion(bucket, region);
    }
    return makeS3Client(configuration);
}

// Asks S3 without holding the lock: a slow answer must keep nobody from buckets that are known.
std::string S3ProviderFactoryV2::resolveRegion(const std::string& bucket) {
    if (std::string region = regionFromEnvironment(); !region.empty()) return region;
    if (std::string region = getCachedBucketRegion(bucket); !region.empty()) return region;
    return queryBucketRegion(*getClientForRegion(bucketLookupRegion()), bucket);
}

std::shared_ptr<Aws::S3::S3Client> S3ProviderFactoryV2::getClientForRegion(const std::string& region) {
    const std::lock_guard lock(m_cacheLock);
    if (const auto known = m_clientCache.find(region); known != m_clientCache.end()) return known->second;
    auto configuration = makeClientConfiguration();
    if (!region.empty()) configuration.region = region;
    return m_clientCache.emplace(region, makeS3Client(configuration)).first->second;
}

std::string S3ProviderFactoryV2::getCachedBucketRegion(const std::string& bucket) {
    const std::lock_guard lock(m_cacheLock);
    const auto known = m_regionCache.find(bucket);
    return known == m_regionCache.end() ? std::string() : known->second;
}

void S3ProviderFactoryV2::storeBucketRegion(std::string bucket, std::string region) {
    const std::lock_guard lock(m_cacheLock);
    m_regionCache.insert_or_assign(std::move(bucket), std::move(region));
}

}  // namespace storage::s3provider
