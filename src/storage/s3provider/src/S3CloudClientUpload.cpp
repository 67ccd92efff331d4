#include <aws/s3/model/PutObjectRequest.h>

#include "CallTrace.hpp"
#include "S3ClientLogger.hpp"
#include "S3CloudClient.hpp"
#include "StreamBody.hpp"

namespace storage::s3provider {

void S3CloudClient::upload(const std::string& key, std::istream& in, std::uint64_t) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logRecord(s3ClientLogger(), LogArguments, " m_bucket=", m_bucket, " key=", key);

    Aws::S3::Model::PutObjectRequest request;
    request.SetBucket(m_bucket);
    request.SetKey(key);
    request.SetBody(bodyOver(in));
    const auto outcome = m_client->PutObject(request);
    if (!outcome.IsSuccess()) raiseFailure(outcome.GetError());
}

}  // namespace storage::s3provider
