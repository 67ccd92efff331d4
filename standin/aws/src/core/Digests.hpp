#pragma once

#include <openssl/evp.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace standin::aws {

using Sha256 = std::array<unsigned char, 32>;

/// A digest of bytes that come piece by piece.
class RunningDigest {
public:
    /// Throws UnsendableRequest when the cryptographic library does not offer the algorithm.
    explicit RunningDigest(const EVP_MD* algorithm);

    void add(const char* bytes, std::size_t count);
    /// The digest's bytes; once.
    std::string finish();

private:
    struct Free {
        void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
    };
    std::unique_ptr<EVP_MD_CTX, Free> context_;
};

Sha256 hmacSha256(const void* key, std::size_t keySize, std::string_view text);

/// In hexadecimal.
std::string sha256Hex(std::string_view text);

/// Lower case.
std::string toHex(std::string_view bytes);
std::string toHex(const Sha256& bytes);

std::string toBase64(std::string_view bytes);

}  // namespace standin::aws
