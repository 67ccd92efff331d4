#include <aws/s3/model/DeleteObjectRequest.h>

#include "CallTrace.hpp"
#include "S3ClientLogger.hpp"
#include "S3CloudClient.hpp"

namespace storage::s3provider {

void S3CloudClient::remove(const std::string& key) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logRecord(s3ClientLogger(), LogArguments, " m_bucket=", m_bucket, " key=", key);

    Aws::S3::Model::DeleteObjectRequest request;
    request.SetBucket(m_bucket);
    request.SetKey(key);
    const auto outcome = m_client->DeleteObject(request);
    if (!outcome.IsSuccess()) raiseFailure(outcome.GetError());
}

}  // namespace storage::s3provider
