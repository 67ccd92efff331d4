#include "ServerWire.hpp"

#include <algorithm>

namespace fuzz {

std::size_t ServerWire::read(char* data, std::size_t size) {
    const std::size_t count = std::min({size, step_, unread_.size()});
    unread_.copy(data, count);
    unread_.remove_prefix(count);
    return count;
}

std::size_t ServerWire::write(std::string_view bytes) {
    received_ += bytes;
    return bytes.size();
}

}  // namespace fuzz
