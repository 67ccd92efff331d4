#include "core/InvocationId.hpp"

#include <openssl/rand.h>

#include <algorithm>
#include <array>
#include <cctype>

#include "core/Digests.hpp"

namespace standin::aws {

std::string makeInvocationId() {
    std::array<unsigned char, 16> bytes{};
    RAND_bytes(bytes.data(), static_cast<int>(bytes.size()));
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0f) | 0x40);  // version 4
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3f) | 0x80);  // variant 1
    std::string text = toHex(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
    for (const std::size_t place : {8U, 13U, 18U, 23U})
        text.insert(place, "-");
    return text;
}

}  // namespace standin::aws
