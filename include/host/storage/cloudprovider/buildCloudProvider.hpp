#pragma once

#include "foundation/storage/provider/IProvider.hpp"
#include "storage/cloudprovider/CloudClient.hpp"

#include <memory>

namespace storage::cloudprovider {

/// How a bucket, which knows keys only, gets folders.
enum class FolderPolicy {
    Implicit = 0,  ///< a folder exists while a key lies below it; a key that ends with "/" is no file
};

/// A provider of the files in the client's bucket: the path "/a/b" is the key "a/b". Asks nothing of the
/// client yet. With `checkRoot`, stat of the root asks whether the bucket can be used, and throws if not.
///
/// Throws std::invalid_argument without a client. The provider's failures are those of the client, and
/// ResourceNotFoundException with the identifier "no_such_key" for a file that can't be opened. The client is
/// handed no key that useKeyCheck() has refused: that is UnaddressableKey.
std::shared_ptr<foundation::storage::provider::IProvider> buildCloudProvider(
    std::shared_ptr<CloudClient> client, FolderPolicy policy, bool checkRoot);

}  // namespace storage::cloudprovider
