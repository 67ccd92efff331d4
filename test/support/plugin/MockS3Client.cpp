#include "MockS3Client.hpp"

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/s3/S3ClientConfiguration.h>
#include <aws/s3/S3EndpointProvider.h>

#include <memory>

namespace testsupport {

namespace {

Aws::S3::S3ClientConfiguration configuration() {
    Aws::Client::ClientConfiguration base;
    base.region = "eu-west-3";
    return {base, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, true,
            Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET};
}

}  // namespace

// Here, so that the operations are compiled once, not in every test's source.
MockS3Client::MockS3Client()
    : S3Client(std::make_shared<Aws::Auth::AnonymousAWSCredentialsProvider>(),
               std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(), configuration()) {}

MockS3Client::~MockS3Client() = default;

}  // namespace testsupport
