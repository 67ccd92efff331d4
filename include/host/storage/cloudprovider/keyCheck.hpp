#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

namespace storage::cloudprovider {

/// Says why clients can't address the object of a key; nothing when they can. It may be called from any
/// thread, by several at once.
using KeyCheck = std::function<std::optional<std::string>(const std::string& key)>;

/// The object of this key can't be addressed: whoever asked for it would get another one. Nothing was sent.
/// The message quotes the key as it stands, control characters included.
class UnaddressableKey : public std::invalid_argument {
public:
    UnaddressableKey(const std::string& key, const std::string& reason)
        : std::invalid_argument("cannot address the key \"" + key + "\": " + reason) {}
};

/// Has every provider of this process ask before it hands a key to its client, from now on; an empty function
/// ends that. A program calls it that knows how its clients send keys. Any thread; a call of the former check
/// may still be under way when this returns.
void useKeyCheck(KeyCheck check);

/// Throws UnaddressableKey for a key that the check refuses, and what the check throws. Any thread.
void requireAddressable(const std::string& key);

}  // namespace storage::cloudprovider
