#include "Commands.hpp"

#include <utility>

#include "ServiceFramework.hpp"

namespace s3vfs {

using foundation::storage::provider::IProvider;

Command onBucket(const std::string& name, const S3Address& address, std::function<void(IProvider&)> action) {
    const auto run = [address, action = std::move(action)](ServiceFramework& framework) {
        action(*framework.providerFactory()->createProvider(address.bucketIri()));
        return true;
    };
    return {name, address, run};
}

}  // namespace s3vfs
