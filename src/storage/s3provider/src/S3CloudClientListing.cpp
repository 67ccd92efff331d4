#include "S3CloudClientListing.hpp"

#include <aws/s3/model/ListObjectsV2Request.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <storage/cloudprovider/utils.hpp>

#include "S3CloudClient.hpp"
#include "UrlDecode.hpp"

namespace storage::s3provider {

using cloudprovider::EntryInfo;

namespace {

Aws::S3::Model::ListObjectsV2Request pageRequest(const std::string& bucket, const std::string& prefix,
                                                 const std::string& continuationToken,
                                                 const cloudprovider::ListOptions& options) {
    Aws::S3::Model::ListObjectsV2Request request;
    request.SetBucket(bucket);
    request.SetPrefix(prefix);
    // Keys may hold characters that XML can't.
    request.SetEncodingType(Aws::S3::Model::EncodingType::url);
    if (!options.Delimiter.empty()) request.SetDelimiter(options.Delimiter);
    if (options.MaxNumEntries > 0) request.SetMaxKeys(options.MaxNumEntries);
    if (!continuationToken.empty()) request.SetContinuationToken(continuationToken);
    return request;
}

}  // namespace

std::vector<EntryInfo> pageEntries(const Aws::S3::Model::ListObjectsV2Result& page, const Clock& now) {
    std::vector<EntryInfo> entries;
    entries.reserve(page.GetContents().size() + page.GetCommonPrefixes().size());
    for (const auto& object : page.GetContents()) {
        entries.emplace_back(urlDecode(object.GetKey()), object.GetSize(),
                             cloudprovider::utils::long2Ptime(object.GetLastModified().Millis()));
    }
    for (const auto& prefix : page.GetCommonPrefixes()) {
        entries.emplace_back(urlDecode(prefix.GetPrefix()), 0, now());
    }
    return entries;
}

std::vector<EntryInfo> S3CloudClient::list(const std::string& prefix, std::string& continuationToken,
                                           const cloudprovider::ListOptions& options) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" prefix=", prefix, " continuationToken=", continuationToken, " options=", options);

    const auto outcome = m_client->ListObjectsV2(pageRequest(m_bucket, prefix, continuationToken, options));
    const auto& page = resultOrRaise(outcome);
    auto entries = pageEntries(page, boost::posix_time::microsec_clock::universal_time);
    continuationToken = page.GetIsTruncated() ? page.GetNextContinuationToken() : std::string();
    logRecord(s3ClientLogger(), LogResults, "Logging found ", entries.size(), " values");
    return entries;
}

}  // namespace storage::s3provider
