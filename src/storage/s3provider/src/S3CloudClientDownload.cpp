#include <aws/s3/model/GetObjectRequest.h>

#include <ostream>
#include <thread>

#include "DownloadAttempts.hpp"
#include "S3CloudClient.hpp"

namespace storage::s3provider {

namespace {

Aws::S3::Model::GetObjectRequest bytesRequest(const std::string& bucket, const std::string& key,
                                              std::uint64_t start, std::uint64_t end) {
    Aws::S3::Model::GetObjectRequest request;
    request.SetBucket(bucket);
    request.SetKey(key);
    if (start < end) request.SetRange(byteRange(start, end));
    return request;
}

void sleepOnThisThread(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

}  // namespace

void S3CloudClient::download(const std::string& key, std::ostream& out, std::uint64_t start,
                             std::uint64_t end) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" key=", key, " start=", start, " end=", end);

    const auto source = [&](std::uint64_t first, std::uint64_t last) {
        return m_client->GetObject(bytesRequest(m_bucket, key, first, last));
    };
    const auto outcome = attemptDownload(m_configuration, start, end, source, sleepOnThisThread);
    out << resultOrRaise(outcome).GetBody().rdbuf();
}

}  // namespace storage::s3provider
