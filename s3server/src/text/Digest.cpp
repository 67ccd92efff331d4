#include "text/Digest.hpp"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <array>
#include <stdexcept>

namespace s3server {
namespace {

void require(bool done) {
    if (!done) throw std::runtime_error("OpenSSL refuses to compute a digest");
}

}  // namespace

Digest Digest::md5() {
    return Digest(EVP_md5());
}

Digest Digest::sha1() {
    return Digest(EVP_sha1());
}

Digest Digest::sha256() {
    return Digest(EVP_sha256());
}

Digest::Digest(const EVP_MD* algorithm) : algorithm_(algorithm), context_(EVP_MD_CTX_new()) {
    require(context_ != nullptr && EVP_DigestInit_ex(context_.get(), algorithm_, nullptr) == 1);
}

void Digest::Free::operator()(EVP_MD_CTX* context) const {
    EVP_MD_CTX_free(context);
}

void Digest::update(std::string_view bytes) {
    require(EVP_DigestUpdate(context_.get(), bytes.data(), bytes.size()) == 1);
}

std::string Digest::finish() {
    std::array<unsigned char, EVP_MAX_MD_SIZE> result{};
    unsigned length = 0;
    require(EVP_DigestFinal_ex(context_.get(), result.data(), &length) == 1);
    require(EVP_DigestInit_ex(context_.get(), algorithm_, nullptr) == 1);
    return {result.begin(), result.begin() + length};
}

std::string digestOf(Digest digest, std::string_view bytes) {
    digest.update(bytes);
    return digest.finish();
}

std::string digestOf(Digest digest, const Bytes& bytes) {
    for (const Bytes::Segment& segment : bytes.segments())
        digest.update(segment.view());
    return digest.finish();
}

std::string hmacSha256(std::string_view key, std::string_view text) {
    std::array<unsigned char, EVP_MAX_MD_SIZE> result{};
    unsigned length = 0;
    require(HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()),
                 reinterpret_cast<const unsigned char*>(text.data()), text.size(), result.data(),
                 &length) != nullptr);
    return {result.begin(), result.begin() + length};
}

bool equalInConstantTime(std::string_view left, std::string_view right) {
    return left.size() == right.size() && CRYPTO_memcmp(left.data(), right.data(), left.size()) == 0;
}

}  // namespace s3server
