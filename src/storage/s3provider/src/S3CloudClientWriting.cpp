#include <aws/s3/model/AbortMultipartUploadRequest.h>
#include <aws/s3/model/CompleteMultipartUploadRequest.h>
#include <aws/s3/model/CompletedMultipartUpload.h>
#include <aws/s3/model/CompletedPart.h>
#include <aws/s3/model/CreateMultipartUploadRequest.h>
#include <aws/s3/model/DeleteObjectRequest.h>
#include <aws/s3/model/PutObjectRequest.h>
#include <aws/s3/model/UploadPartCopyRequest.h>
#include <aws/s3/model/UploadPartRequest.h>

#include <algorithm>
#include <boost/numeric/conversion/cast.hpp>
#include <istream>
#include <memory>
#include <storage/cloudprovider/CloudException.hpp>
#include <utility>

#include "DownloadAttempts.hpp"
#include "S3CloudClient.hpp"

namespace storage::s3provider {

using cloudprovider::PartInfo;

namespace {

// The caller's stream buffer as the SDK takes request bodies: nothing is copied, and whatever the SDK does to
// the position is seen by the caller. The buffer must outlive the request.
std::shared_ptr<std::iostream> bodyOver(std::istream& in) {
    return std::make_shared<std::iostream>(in.rdbuf());
}

// The smallest size S3 takes for every part but the last.
constexpr std::uint64_t partSize = std::uint64_t{5} * 1024 * 1024;

int partNumber(const PartInfo& part) {
    return boost::numeric_cast<int>(part.Index + 1);
}

Aws::S3::Model::CompletedMultipartUpload completedParts(const std::vector<PartInfo>& parts) {
    Aws::S3::Model::CompletedMultipartUpload completed;
    for (const auto& part : parts) {
        Aws::S3::Model::CompletedPart completedPart;
        completedPart.SetPartNumber(partNumber(part));
        completedPart.SetETag(part.Tag);
        completed.AddParts(std::move(completedPart));
    }
    return completed;
}

std::vector<PartInfo> partsOfSize(std::uint64_t size) {
    std::vector<PartInfo> parts;
    for (std::uint64_t offset = 0; offset != size; offset += parts.back().Size) {
        parts.push_back({parts.size(), offset, std::min(size - offset, partSize), {}});
    }
    return parts;
}

}  // namespace

void S3CloudClient::remove(const std::string& key) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" key=", key);

    Aws::S3::Model::DeleteObjectRequest request;
    request.SetBucket(m_bucket);
    request.SetKey(key);
    resultOrRaise(m_client->DeleteObject(request));
}

void S3CloudClient::upload(const std::string& key, std::istream& in, std::uint64_t) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" key=", key);

    Aws::S3::Model::PutObjectRequest request;
    request.SetBucket(m_bucket);
    request.SetKey(key);
    request.SetBody(bodyOver(in));
    resultOrRaise(m_client->PutObject(request));
}

std::vector<PartInfo> S3CloudClient::listParts(const std::string& key) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" key=", key);

    const auto entry = stat(key);
    if (!entry) throw cloudprovider::ResourceNotFoundException(std::nullopt);
    return partsOfSize(static_cast<std::uint64_t>(entry->size));
}

std::string S3CloudClient::startMultipartUpload(const std::string& key, const std::string&) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" key=", key);

    Aws::S3::Model::CreateMultipartUploadRequest request;
    request.SetBucket(m_bucket);
    request.SetKey(key);
    std::string uploadId = resultOrRaise(m_client->CreateMultipartUpload(request)).GetUploadId();
    traceResult(s3ClientLogger(), S3PROVIDER_CALL_SITE, "out", uploadId);
    return uploadId;
}

std::string S3CloudClient::uploadPart(const std::string& key, const std::string& uploadId,
                                      const PartInfo& info, std::istream& in) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" key=", key, " uploadId=", uploadId, " info=", info);

    Aws::S3::Model::UploadPartRequest request;
    request.SetBucket(m_bucket);
    request.SetKey(key);
    request.SetUploadId(uploadId);
    request.SetPartNumber(partNumber(info));
    request.SetBody(bodyOver(in));
    return resultOrRaise(m_client->UploadPart(request)).GetETag();
}

std::string S3CloudClient::reusePart(const std::string& key, const std::string& uploadId,
                                     const PartInfo& info) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" key=", key, " uploadId=", uploadId, " info=", info);

    Aws::S3::Model::UploadPartCopyRequest request;
    request.SetBucket(m_bucket);
    request.SetKey(key);
    request.SetUploadId(uploadId);
    request.SetPartNumber(partNumber(info));
    request.SetCopySource(m_bucket + "/" + key);
    request.SetCopySourceRange(byteRange(info.Offset, info.Offset + info.Size - 1));
    return resultOrRaise(m_client->UploadPartCopy(request)).GetCopyPartResult().GetETag();
}

void S3CloudClient::abortMultipartUpload(const std::string& key, const std::string& uploadId) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" key=", key, " uploadId=", uploadId);

    Aws::S3::Model::AbortMultipartUploadRequest request;
    request.SetBucket(m_bucket);
    request.SetKey(key);
    request.SetUploadId(uploadId);
    resultOrRaise(m_client->AbortMultipartUpload(request));
}

void S3CloudClient::completeMultipartUpload(const std::string& key, const std::string& uploadId,
                                            const std::vector<PartInfo>& parts) {
    const CallTrace trace(s3ClientLogger(), S3PROVIDER_CALL_SITE);
    logArguments(" key=", key, " uploadId=", uploadId);

    Aws::S3::Model::CompleteMultipartUploadRequest request;
    request.SetBucket(m_bucket);
    request.SetKey(key);
    request.SetUploadId(uploadId);
    request.SetMultipartUpload(completedParts(parts));
    resultOrRaise(m_client->CompleteMultipartUpload(request));
}

}  // namespace storage::s3provider
