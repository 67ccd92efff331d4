#include "Commands.hpp"

#include <utility>

#include "Interruption.hpp"
#include "ServiceFramework.hpp"

namespace s3vfs {

using foundation::storage::provider::IProvider;

Command onBucket(const std::string& name, const S3Address& address, std::function<void(IProvider&)> action) {
    const auto run = [address, action = std::move(action)](ServiceFramework& framework) {
        const auto bucket = framework.providerFactory()->createProvider(address.bucketIri());
        throwIfInterrupted();
        action(*bucket);
        return true;
    };
    return {name, address, run};
}

}  // namespace s3vfs
