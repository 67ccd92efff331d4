#pragma once

#include <string>
#include <utility>
#include <vector>

namespace bench {

using HeaderLines = std::vector<std::pair<std::string, std::string>>;

/// Signs one host's requests for one region, deriving the key once a day. AWS Signature Version 4, Amazon S3
/// API Reference, "Authenticating Requests: Using the Authorization Header".
class RequestSignature {
public:
    RequestSignature(std::string accessKey, std::string secretKey, std::string region);

    /// `headers` in the order of their names, x-amz-date and x-amz-content-sha256 among them; path and query
    /// encoded. The value of the authorization header.
    std::string sign(const std::string& method, const std::string& path, const std::string& query,
                     const HeaderLines& headers, const std::string& date, const std::string& payloadHash);

private:
    const std::string& keyOf(const std::string& day);

    std::string accessKey_;
    std::string secretKey_;
    std::string region_;
    std::string day_;
    std::string key_;
};

std::string hex(const std::string& bytes);
/// Raw digests.
std::string sha256(const std::string& bytes);
std::string md5(const std::string& bytes);

}  // namespace bench
