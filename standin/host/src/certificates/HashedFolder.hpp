#pragma once

#include <string_view>

namespace foundation::certificates {

/// Whether it is a folder with a certificate to be found by OpenSSL: a file such as `002c0b4f.0`, named by
/// the hash of its subject. False for what can't be read.
bool isHashedFolder(std::string_view path);

}  // namespace foundation::certificates
