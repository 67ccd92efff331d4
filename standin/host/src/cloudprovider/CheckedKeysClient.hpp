#pragma once

#include "storage/cloudprovider/CloudClient.hpp"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace storage::cloudprovider {

/// A client that is handed no key without requireAddressable(). A listing's prefix isn't the key of an object
/// and goes by unasked.
class CheckedKeysClient : public CloudClient {
public:
    explicit CheckedKeysClient(std::shared_ptr<CloudClient> client) : client_(std::move(client)) {}

    boost::optional<EntryInfo> stat(const std::string& key) override;
    void checkRootValidity(const std::string& path) override;
    std::vector<EntryInfo> list(const std::string& prefix, std::string& continuationToken,
                                const ListOptions& options) override;
    void remove(const std::string& key) override;
    void download(const std::string& key, std::ostream& out, std::uint64_t start, std::uint64_t end) override;
    void upload(const std::string& key, std::istream& in, std::uint64_t size) override;
    std::vector<PartInfo> listParts(const std::string& key) override;
    std::string startMultipartUpload(const std::string& key, const std::string& reserved) override;
    std::string uploadPart(const std::string& key, const std::string& uploadId, const PartInfo& info,
                           std::istream& in) override;
    std::string reusePart(const std::string& key, const std::string& uploadId, const PartInfo& info) override;
    void abortMultipartUpload(const std::string& key, const std::string& uploadId) override;
    void completeMultipartUpload(const std::string& key, const std::string& uploadId,
                                 const std::vector<PartInfo>& parts) override;

private:
    CloudClient& clientFor(const std::string& key) const;

    const std::shared_ptr<CloudClient> client_;
};

}  // namespace storage::cloudprovider
