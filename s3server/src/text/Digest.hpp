#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "store/Bytes.hpp"

typedef struct evp_md_ctx_st EVP_MD_CTX;
typedef struct evp_md_st EVP_MD;

namespace s3server {

/// A message digest fed piece by piece. All digests here are raw bytes, not text.
class Digest {
public:
    static Digest md5();
    static Digest sha1();
    static Digest sha256();

    void update(std::string_view bytes);
    /// Ends the digest and starts a new one.
    std::string finish();

private:
    explicit Digest(const EVP_MD* algorithm);

    struct Free {
        void operator()(EVP_MD_CTX* context) const;
    };
    const EVP_MD* algorithm_;
    std::unique_ptr<EVP_MD_CTX, Free> context_;
};

std::string digestOf(Digest digest, std::string_view bytes);
std::string digestOf(Digest digest, const Bytes& bytes);
std::string hmacSha256(std::string_view key, std::string_view text);
/// Takes the same time wherever the texts differ.
bool equalInConstantTime(std::string_view left, std::string_view right);

}  // namespace s3server
