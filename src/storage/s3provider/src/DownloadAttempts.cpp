#include "DownloadAttempts.hpp"

#include <aws/core/http/HttpResponse.h>

#include "DiagnosticRecord.hpp"
#include "S3CloudClient.hpp"
#include "S3ErrorTranslation.hpp"

namespace storage::s3provider {

using Aws::S3::Model::GetObjectOutcome;

namespace {

bool isRangeNotSatisfiable(const GetObjectOutcome& outcome) {
    return outcome.GetError().GetResponseCode() ==
           Aws::Http::HttpResponseCode::REQUESTED_RANGE_NOT_SATISFIABLE;
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

}  // namespace storage::s3provider
