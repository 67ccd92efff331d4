#pragma once

#include "foundation/storage/provider/IProvider.hpp"
#include "storage/cloudprovider/CloudClient.hpp"

#include <memory>

namespace storage::cloudprovider {

/// Files and implied folders out of the keys of one bucket. It has no state but the client.
///
/// A listing that can't be true is an UnknownErrorException: with the identifier "unexpected_entry" when it
/// has something that isn't directly in the folder, with "unexpected_token" when the next page is the same.
class CloudProvider : public foundation::storage::provider::IProvider {
public:
    CloudProvider(std::shared_ptr<CloudClient> client, bool checkRoot);

    boost::optional<foundation::storage::provider::Entry> stat(const std::u16string& path) override;
    std::vector<foundation::storage::provider::Entry> list(const std::u16string& folder) override;
    std::unique_ptr<foundation::storage::provider::IReader> openRead(const std::u16string& path) override;
    std::unique_ptr<foundation::storage::provider::IWriter> openWrite(const std::u16string& path) override;
    void remove(const std::u16string& path) override;

private:
    bool anyKeyBelow(const std::string& prefix) const;

    const std::shared_ptr<CloudClient> client_;
    const bool checkRoot_;
};

}  // namespace storage::cloudprovider
