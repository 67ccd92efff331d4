#pragma once

#include <optional>
#include <string>

namespace s3vfs {

/// Why the AWS SDK that this program is linked with can't address the object of that key; nothing when it
/// can. The SDK, initialised, is asked itself, not its version: how it writes the key into a URL and into the
/// source of a copy; and, for a key with a segment "." or "..", which HTTP clients may resolve, what arrives
/// of a request for it. That request goes to this process. Any thread.
std::optional<std::string> whyNotAddressable(const std::string& key);

}  // namespace s3vfs
