#include "commands/Commands.hpp"

#include <storage/cloudprovider/keyCheck.hpp>
#include <utility>

#include "Interruption.hpp"
#include "framework/ServiceFramework.hpp"

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

Command onObject(const std::string& name, const S3Address& address, std::function<void(IProvider&)> action) {
    Command command = onBucket(name, address, std::move(action));
    command.run = [key = address.key, run = std::move(command.run)](ServiceFramework& framework) {
        const bool isObject = !key.empty() && key.back() != '/';
        if (isObject) storage::cloudprovider::requireAddressable(key);
        return run(framework);
    };
    return command;
}

}  // namespace s3vfs
