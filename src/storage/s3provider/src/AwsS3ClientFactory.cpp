#include "AwsS3ClientFactory.hpp"

#include <utility>

#include "ZRCredentialsProviderChain.hpp"

namespace storage::s3provider {

std::shared_ptr<Aws::S3::S3Client> makeS3Client(
    std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentials,
    std::shared_ptr<EndpointProvider> endpointProvider,
    const Aws::Client::ClientConfiguration& configuration) {
    const Aws::S3::S3ClientConfiguration s3Configuration(
        configuration, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, true,
        Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET);
    return std::make_shared<Aws::S3::S3Client>(std::move(credentials), std::move(endpointProvider),
                                               s3Configuration);
}

std::shared_ptr<Aws::S3::S3Client> makeS3Client(const Aws::Client::ClientConfiguration& configuration) {
    auto endpointProvider = std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>();
    auto credentials = std::make_shared<ZRCredentialsProviderChain>();
    return makeS3Client(std::move(credentials), std::move(endpointProvider), configuration);
}

}  // namespace storage::s3provider
