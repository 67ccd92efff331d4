#include "RequestSignature.hpp"

#include <openssl/evp.h>
#include <openssl/hmac.h>

namespace bench {
namespace {

const unsigned char* data(const std::string& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

std::string digest(const EVP_MD* algorithm, const std::string& bytes) {
    unsigned char out[EVP_MAX_MD_SIZE];
    unsigned size = 0;
    EVP_Digest(bytes.data(), bytes.size(), out, &size, algorithm, nullptr);
    return {reinterpret_cast<const char*>(out), size};
}

std::string hmac(const std::string& key, const std::string& text) {
    unsigned char out[EVP_MAX_MD_SIZE];
    unsigned size = 0;
    HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()), data(text), text.size(), out, &size);
    return {reinterpret_cast<const char*>(out), size};
}

}  // namespace

std::string hex(const std::string& bytes) {
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += digits[byte >> 4U];
        text += digits[byte & 15U];
    }
    return text;
}

std::string sha256(const std::string& bytes) {
    return digest(EVP_sha256(), bytes);
}

std::string md5(const std::string& bytes) {
    return digest(EVP_md5(), bytes);
}

RequestSignature::RequestSignature(std::string accessKey, std::string secretKey, std::string region)
    : accessKey_(std::move(accessKey)), secretKey_(std::move(secretKey)), region_(std::move(region)) {}

std::string RequestSignature::sign(const std::string& method, const std::string& path,
                                   const std::string& query, const HeaderLines& headers,
                                   const std::string& date, const std::string& payloadHash) {
    std::string canonical = method + '\n' + path + '\n' + query + '\n';
    std::string names;
    for (const auto& [name, value] : headers) {
        canonical.append(name).append(":").append(value).append("\n");
        names.append(names.empty() ? "" : ";").append(name);
    }
    canonical.append("\n").append(names).append("\n").append(payloadHash);
    const std::string scope = date.substr(0, 8) + '/' + region_ + "/s3/aws4_request";
    const std::string text = "AWS4-HMAC-SHA256\n" + date + '\n' + scope + '\n' + hex(sha256(canonical));
    return "AWS4-HMAC-SHA256 Credential=" + accessKey_ + '/' + scope + ", SignedHeaders=" + names +
           ", Signature=" + hex(hmac(keyOf(date.substr(0, 8)), text));
}

const std::string& RequestSignature::keyOf(const std::string& day) {
    if (day != day_) {
        key_ = hmac(hmac(hmac(hmac("AWS4" + secretKey_, day), region_), "s3"), "aws4_request");
        day_ = day;
    }
    return key_;
}

}  // namespace bench
