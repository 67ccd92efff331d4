#include "cloudprovider/CheckedKeysClient.hpp"

#include "storage/cloudprovider/keyCheck.hpp"

#include <mutex>
#include <utility>

namespace storage::cloudprovider {

namespace {

std::mutex mutex;
std::shared_ptr<const KeyCheck> current;  // null: every key is good; guarded by mutex

std::shared_ptr<const KeyCheck> currentCheck() {
    const std::lock_guard lock(mutex);
    return current;
}

}  // namespace

void useKeyCheck(KeyCheck check) {
    auto next = check ? std::make_shared<const KeyCheck>(std::move(check)) : nullptr;
    const std::lock_guard lock(mutex);
    current.swap(next);
}

void requireAddressable(const std::string& key) {
    const auto check = currentCheck();
    if (!check) return;
    if (const auto reason = (*check)(key)) throw UnaddressableKey(key, *reason);
}

CloudClient& CheckedKeysClient::clientFor(const std::string& key) const {
    requireAddressable(key);
    return *client_;
}

boost::optional<EntryInfo> CheckedKeysClient::stat(const std::string& key) {
    return clientFor(key).stat(key);
}

void CheckedKeysClient::checkRootValidity(const std::string& path) {
    client_->checkRootValidity(path);
}

std::vector<EntryInfo> CheckedKeysClient::list(const std::string& prefix, std::string& continuationToken,
                                               const ListOptions& options) {
    return client_->list(prefix, continuationToken, options);
}

void CheckedKeysClient::remove(const std::string& key) {
    clientFor(key).remove(key);
}

void CheckedKeysClient::download(const std::string& key, std::ostream& out, std::uint64_t start,
                                 std::uint64_t end) {
    clientFor(key).download(key, out, start, end);
}

void CheckedKeysClient::upload(const std::string& key, std::istream& in, std::uint64_t size) {
    clientFor(key).upload(key, in, size);
}

std::vector<PartInfo> CheckedKeysClient::listParts(const std::string& key) {
    return clientFor(key).listParts(key);
}

std::string CheckedKeysClient::startMultipartUpload(const std::string& key, const std::string& reserved) {
    return clientFor(key).startMultipartUpload(key, reserved);
}

std::string CheckedKeysClient::uploadPart(const std::string& key, const std::string& uploadId,
                                          const PartInfo& info, std::istream& in) {
    return clientFor(key).uploadPart(key, uploadId, info, in);
}

std::string CheckedKeysClient::reusePart(const std::string& key, const std::string& uploadId,
                                         const PartInfo& info) {
    return clientFor(key).reusePart(key, uploadId, info);
}

void CheckedKeysClient::abortMultipartUpload(const std::string& key, const std::string& uploadId) {
    clientFor(key).abortMultipartUpload(key, uploadId);
}

void CheckedKeysClient::completeMultipartUpload(const std::string& key, const std::string& uploadId,
                                                const std::vector<PartInfo>& parts) {
    clientFor(key).completeMultipartUpload(key, uploadId, parts);
}

}  // namespace storage::cloudprovider
