#pragma once

#include <fstream>

namespace storage::cloudprovider {

/// A new empty file without a name, open for reading and writing; it is gone when the stream closes. Throws
/// std::system_error.
std::fstream openTemporaryFile();

}  // namespace storage::cloudprovider
