#include "core/Digests.hpp"

#include <openssl/hmac.h>

#include "core/UnsendableRequest.hpp"

namespace standin::aws {
namespace {

const unsigned char* bytesOf(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

}  // namespace

RunningDigest::RunningDigest(const EVP_MD* algorithm) : context_(EVP_MD_CTX_new()) {
    if (!context_ || EVP_DigestInit_ex(context_.get(), algorithm, nullptr) != 1) {
        throw UnsendableRequest("The cryptographic library does not offer a digest that the request needs");
    }
}

void RunningDigest::add(const char* bytes, std::size_t count) {
    EVP_DigestUpdate(context_.get(), bytes, count);
}

std::string RunningDigest::finish() {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned size = 0;
    EVP_DigestFinal_ex(context_.get(), digest.data(), &size);
    return {reinterpret_cast<const char*>(digest.data()), size};
}

Sha256 hmacSha256(const void* key, std::size_t keySize, std::string_view text) {
    Sha256 code{};
    unsigned size = 0;
    HMAC(EVP_sha256(), key, static_cast<int>(keySize), bytesOf(text), text.size(), code.data(), &size);
    return code;
}

std::string sha256Hex(std::string_view text) {
    RunningDigest digest(EVP_sha256());
    digest.add(text.data(), text.size());
    return toHex(digest.finish());
}

std::string toHex(std::string_view bytes) {
    constexpr std::string_view hex = "0123456789abcdef";
    std::string out;
    out.reserve(2 * bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        out += {hex[byte >> 4], hex[byte & 15]};
    }
    return out;
}

std::string toHex(const Sha256& bytes) {
    return toHex(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

std::string toBase64(std::string_view bytes) {
    std::string out(4 * ((bytes.size() + 2) / 3) + 1, '\0');  // OpenSSL writes a NUL behind the text
    const int size = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(out.data()), bytesOf(bytes),
                                     static_cast<int>(bytes.size()));
    out.resize(static_cast<std::size_t>(size));
    return out;
}

}  // namespace standin::aws
