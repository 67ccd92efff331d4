#include "storage/cloudprovider/buildCloudProvider.hpp"

#include "cloudprovider/CheckedKeysClient.hpp"
#include "cloudprovider/CloudProvider.hpp"

#include <stdexcept>
#include <utility>

namespace storage::cloudprovider {

std::shared_ptr<foundation::storage::provider::IProvider> buildCloudProvider(
    std::shared_ptr<CloudClient> client, FolderPolicy policy, bool checkRoot) {
    if (!client) throw std::invalid_argument("a cloud provider needs a client");
    if (policy != FolderPolicy::Implicit) throw std::invalid_argument("unknown folder policy");
    auto checked = std::make_shared<CheckedKeysClient>(std::move(client));
    return std::make_shared<CloudProvider>(std::move(checked), checkRoot);
}

}  // namespace storage::cloudprovider
