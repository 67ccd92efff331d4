#include "replay/Digest.hpp"

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/sha.h>

namespace replay {
namespace {

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

}  // namespace

std::string toHex(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += digits[value >> 4U];
        text += digits[value & 0xFU];
    }
    return text;
}

std::string sha256(std::string_view bytes) {
    std::string digest(SHA256_DIGEST_LENGTH, '\0');
    SHA256(bytesOf(bytes), bytes.size(), reinterpret_cast<unsigned char*>(digest.data()));
    return digest;
}

std::string sha256Hex(std::string_view bytes) {
    return toHex(sha256(bytes));
}

std::string hmacSha256(std::string_view key, std::string_view message) {
    std::string code(SHA256_DIGEST_LENGTH, '\0');
    HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()), bytesOf(message), message.size(),
         reinterpret_cast<unsigned char*>(code.data()), nullptr);
    return code;
}

}  // namespace replay
