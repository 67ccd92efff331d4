#include "commands/Entries.hpp"

#include <stdexcept>

namespace s3vfs {

using foundation::storage::provider::Entry;
using foundation::storage::provider::IProvider;

Entry requireEntry(IProvider& bucket, const std::u16string& path) {
    const auto entry = bucket.stat(path);
    if (!entry) throw std::runtime_error("there is no such file or folder");
    return *entry;
}

bool isFolder(const Entry& entry) {
    return entry.kind == foundation::storage::provider::EntryKind::Folder;
}

}  // namespace s3vfs
