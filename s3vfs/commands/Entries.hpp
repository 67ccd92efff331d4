#pragma once

#include <foundation/storage/provider/IProvider.hpp>
#include <string>

namespace s3vfs {

/// The file or folder at a path. Throws std::runtime_error when there is neither.
foundation::storage::provider::Entry requireEntry(foundation::storage::provider::IProvider& bucket,
                                                  const std::u16string& path);

bool isFolder(const foundation::storage::provider::Entry& entry);

}  // namespace s3vfs
