#pragma once

#include <memory>
#include <storage/cloudprovider/CloudClient.hpp>
#include <string>

namespace testsupport {

/// The part of a bucket whose keys begin with a prefix, as if it were all of the bucket.
class PrefixedCloudClient : public storage::cloudprovider::CloudClient {
public:
    PrefixedCloudClient(std::unique_ptr<CloudClient> bucket, std::string prefix);

    boost::optional<storage::cloudprovider::EntryInfo> stat(const std::string& key) override;
    void checkRootValidity(const std::string& path) override;
    std::vector<storage::cloudprovider::EntryInfo> list(
        const std::string& prefix, std::string& continuationToken,
        const storage::cloudprovider::ListOptions& options) override;
    void remove(const std::string& key) override;
    void download(const std::string& key, std::ostream& out, std::uint64_t start, std::uint64_t end) override;
    void upload(const std::string& key, std::istream& in, std::uint64_t size) override;
    std::vector<storage::cloudprovider::PartInfo> listParts(const std::string& key) override;
    std::string startMultipartUpload(const std::string& key, const std::string& reserved) override;
    std::string uploadPart(const std::string& key, const std::string& uploadId,
                           const storage::cloudprovider::PartInfo& info, std::istream& in) override;
    std::string reusePart(const std::string& key, const std::string& uploadId,
                          const storage::cloudprovider::PartInfo& info) override;
    void abortMultipartUpload(const std::string& key, const std::string& uploadId) override;
    void completeMultipartUpload(const std::string& key, const std::string& uploadId,
                                 const std::vector<storage::cloudprovider::PartInfo>& parts) override;

private:
    std::unique_ptr<CloudClient> bucket_;
    std::string prefix_;
};

}  // namespace testsupport
