#include "S3ProviderFactoryV2.hpp"

#include <fl/i18n.hpp>
#include <foundation/storage/provider/Exception.hpp>
#include <storage/cloudprovider/buildCloudProvider.hpp>
#include <utility>

#include "AwsS3ClientFactory.hpp"
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

}  // namespace storage::s3provider
