#include <aws/core/http/HttpResponse.h>
#include <aws/s3/model/GetObjectRequest.h>

#include <ostream>
#include <thread>

#include "ByteRange.hpp"
#include "CallTrace.hpp"
#include "DownloadAttempts.hpp"
#include "S3ClientLogger.hpp"
#include "S3CloudClient.hpp"
#include "S3ErrorTranslation.hpp"

namespace storage::s3provider {

using Aws::S3::Model::GetObjectOutcome;

namespace {

bool isRangeNotSatisfiable(const GetObjectOutcome& outcome) {
    return outcome.GetError().GetResponseCode() ==
           Aws::Http::HttpResponseCode::REQUESTED_RANGE_NOT_SATISFIABLE;
}

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

GetObjectOutcome attemptDownload(const S3ClientConfiguration& settings, std::uint64_t start,
                                 std::uint64_t end, const ByteSource& source, const Sleeper& sleep) {
    GetObjectOutcome outcome{Aws::S3::S3Error()};
    const auto attempts = static_cast<std::uint64_t>(settings.attempts);
    for (std::uint64_t attempt = 0; attempt < attempts; ++attempt) {
        outcome = source(start, end);
        logRecord(s3ClientLogger(), LogResults, [&] { return describeOutcome(outcome); });
        if (outcome.IsSuccess()) break;

        logRecord(s3ClientLogger(), LogResults, "Internal error: retrying...");
        if (settings.retryTimeMs > 0) sleep(std::chrono::milliseconds(settings.retryTimeMs));
        // An empty object has no bytes to satisfy any range: ask for it whole.
        if (start == 0 && isRangeNotSatisfiable(outcome)) end = 0;
    }
    return outcome;
}

void S3CloudClient::download(const std::string& key, std::ostream& out, std::uint64_t start,
                             std::uint64_t end) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logRecord(s3ClientLogger(), LogArguments, " m_bucket=", m_bucket, " key=", key, " start=", start,
              " end=", end);

    const auto source = [&](std::uint64_t first, std::uint64_t last) {
        return m_client->GetObject(bytesRequest(m_bucket, key, first, last));
    };
    const auto outcome = attemptDownload(m_configuration, start, end, source, sleepOnThisThread);
    if (!outcome.IsSuccess()) raiseFailure(outcome.GetError());
    out << outcome.GetResult().GetBody().rdbuf();
}

}  // namespace storage::s3provider
