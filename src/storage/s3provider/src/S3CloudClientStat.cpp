#include <aws/s3/model/HeadBucketRequest.h>
#include <aws/s3/model/HeadObjectRequest.h>

#include <storage/cloudprovider/CloudException.hpp>
#include <storage/cloudprovider/utils.hpp>

#include "S3CloudClient.hpp"

namespace storage::s3provider {

using Aws::S3::S3Errors;
using cloudprovider::EntryInfo;

namespace {

// A location request that fails so says that there is no such bucket, or nothing at all.
bool meansInvalidBucket(S3Errors type) {
    return type == S3Errors::NO_SUCH_BUCKET || type == S3Errors::RESOURCE_NOT_FOUND ||
           type == S3Errors::UNKNOWN;
}

}  // namespace

boost::optional<EntryInfo> S3CloudClient::stat(const std::string& key) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" key=", key);

    Aws::S3::Model::HeadObjectRequest request;
    request.SetBucket(m_bucket);
    request.SetKey(key);
    const auto outcome = m_client->HeadObject(request);
    try {
        const auto& object = resultOrRaise(outcome);
        return EntryInfo(key, object.GetContentLength(),
                         cloudprovider::utils::long2Ptime(object.GetLastModified().Millis()));
    } catch (const cloudprovider::ResourceNotFoundException&) {
        return boost::none;
    }
}

void S3CloudClient::checkRootValidity(const std::string&) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments();

    Aws::S3::Model::HeadBucketRequest request;
    request.SetBucket(m_bucket);
    if (m_client->HeadBucket(request).IsSuccess()) return;

    // A bucket in the right region that refuses HeadBucket may still serve its objects.
    const auto error = checkBucketRegion();
    if (!error) return;
    if (meansInvalidBucket(error->GetErrorType())) {
        using foundation::storage::provider::ExceptionContext;
        throw cloudprovider::InvalidLocationException(ExceptionContext(u"invalid_bucket"));
    }
    throwCloudError(*error);
}

}  // namespace storage::s3provider
