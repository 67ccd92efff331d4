#include "Commands.hpp"

#include <utility>

namespace s3vfs {

using foundation::storage::provider::IProvider;
using foundation::storage::provider::PhysicalProviderFactory;

Command onBucket(const std::string& name, const S3Address& address, std::function<void(IProvider&)> action) {
    const auto run = [address, action = std::move(action)](PhysicalProviderFactory& factory) {
        action(*factory.createProvider(address.bucketIri()));
        return true;
    };
    return {name, address, run};
}

}  // namespace s3vfs
