#include "S3CloudClient.hpp"

#include <aws/s3/model/BucketLocationConstraint.h>
#include <aws/s3/model/GetBucketLocationRequest.h>

#include <storage/cloudprovider/CloudException.hpp>
#include <utility>

#include "S3ErrorTranslation.hpp"

namespace storage::s3provider {

foundation::log::diagnostic_logger& s3ClientLogger() {
    static foundation::log::diagnostic_logger logger("storage::s3provider::S3Client");
    return logger;
}

S3CloudClient::S3CloudClient(std::string bucket, std::shared_ptr<Aws::S3::S3Client> client,
                             S3ClientConfiguration configuration, std::string configuredRegion)
    : m_configuration(configuration),
      m_bucket(std::move(bucket)),
      m_client(std::move(client)),
      m_configuredRegion(std::move(configuredRegion)) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" m_configuredRegion=", m_configuredRegion);
}

S3CloudClient::~S3CloudClient() = default;

void S3CloudClient::raiseFailure(const Aws::Client::AWSError<Aws::S3::S3Errors>& error) {
    logRecord(s3ClientLogger(), LogFailedRequests, "Cloud operation failed: ", error);
    throwCloudError(error);
}

void S3CloudClient::throwCloudError(const Aws::Client::AWSError<Aws::S3::S3Errors>& error) {
    if (const auto failure = explainError(error)) throwFailure(*failure);
    // A request sent to the wrong region fails in many ways: before giving up, see whether that was it.
    checkBucketRegion();
    throw cloudprovider::UnknownErrorException(std::nullopt);
}

std::optional<Aws::Client::AWSError<Aws::S3::S3Errors>> S3CloudClient::checkBucketRegion() {
    using Aws::S3::Model::BucketLocationConstraintMapper::GetNameForBucketLocationConstraint;
    Aws::S3::Model::GetBucketLocationRequest request;
    request.SetBucket(m_bucket);

    const auto outcome = m_client->GetBucketLocation(request);
    if (!outcome.IsSuccess()) return outcome.GetError();
    if (GetNameForBucketLocationConstraint(outcome.GetResult().GetLocationConstraint()) !=
        m_configuredRegion) {
        using foundation::storage::provider::ExceptionContext;
        throw cloudprovider::InvalidLocationException(ExceptionContext(u"bad_region"));
    }
    return std::nullopt;
}

}  // namespace storage::s3provider
