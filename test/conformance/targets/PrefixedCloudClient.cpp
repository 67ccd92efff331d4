#include "conformance/targets/PrefixedCloudClient.hpp"

#include <utility>

namespace testsupport {

using namespace storage::cloudprovider;

PrefixedCloudClient::PrefixedCloudClient(std::unique_ptr<CloudClient> bucket, std::string prefix)
    : bucket_(std::move(bucket)), prefix_(std::move(prefix)) {}

boost::optional<EntryInfo> PrefixedCloudClient::stat(const std::string& key) {
    auto entry = bucket_->stat(prefix_ + key);
    if (entry) entry->name.erase(0, prefix_.size());
    return entry;
}

void PrefixedCloudClient::checkRootValidity(const std::string& path) {
    bucket_->checkRootValidity(path);
}

std::vector<EntryInfo> PrefixedCloudClient::list(const std::string& prefix, std::string& continuationToken,
                                                 const ListOptions& options) {
    auto entries = bucket_->list(prefix_ + prefix, continuationToken, options);
    for (auto& entry : entries)
        entry.name.erase(0, prefix_.size());
    return entries;
}

void PrefixedCloudClient::remove(const std::string& key) {
    bucket_->remove(prefix_ + key);
}

void PrefixedCloudClient::download(const std::string& key, std::ostream& out, std::uint64_t start,
                                   std::uint64_t end) {
    bucket_->download(prefix_ + key, out, start, end);
}

void PrefixedCloudClient::upload(const std::string& key, std::istream& in, std::uint64_t size) {
    bucket_->upload(prefix_ + key, in, size);
}

std::vector<PartInfo> PrefixedCloudClient::listParts(const std::string& key) {
    return bucket_->listParts(prefix_ + key);
}

std::string PrefixedCloudClient::startMultipartUpload(const std::string& key, const std::string& reserved) {
    return bucket_->startMultipartUpload(prefix_ + key, reserved);
}

std::string PrefixedCloudClient::uploadPart(const std::string& key, const std::string& uploadId,
                                            const PartInfo& info, std::istream& in) {
    return bucket_->uploadPart(prefix_ + key, uploadId, info, in);
}

std::string PrefixedCloudClient::reusePart(const std::string& key, const std::string& uploadId,
                                           const PartInfo& info) {
    return bucket_->reusePart(prefix_ + key, uploadId, info);
}

void PrefixedCloudClient::abortMultipartUpload(const std::string& key, const std::string& uploadId) {
    bucket_->abortMultipartUpload(prefix_ + key, uploadId);
}

void PrefixedCloudClient::completeMultipartUpload(const std::string& key, const std::string& uploadId,
                                                  const std::vector<PartInfo>& parts) {
    bucket_->completeMultipartUpload(prefix_ + key, uploadId, parts);
}

}  // namespace testsupport
