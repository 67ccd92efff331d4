#pragma once

#include <aws/core/utils/DateTime.h>
#include <aws/core/utils/memory/stl/AWSString.h>

namespace Aws::Auth {

/// What a request is signed with. Empty credentials leave it unsigned.
class AWSCredentials {
public:
    /// Empty, and never expiring.
    AWSCredentials();
    AWSCredentials(Aws::String accessKeyId, Aws::String secretKey, Aws::String sessionToken = {});
    AWSCredentials(Aws::String accessKeyId, Aws::String secretKey, Aws::String sessionToken,
                   Aws::Utils::DateTime expiration);

    bool operator==(const AWSCredentials& other) const;
    bool operator!=(const AWSCredentials& other) const { return !(*this == other); }

    const Aws::String& GetAWSAccessKeyId() const { return accessKeyId_; }
    const Aws::String& GetAWSSecretKey() const { return secretKey_; }
    /// Empty for long-lived credentials.
    const Aws::String& GetSessionToken() const { return sessionToken_; }
    Aws::Utils::DateTime GetExpiration() const { return expiration_; }

    bool IsEmpty() const { return accessKeyId_.empty() && secretKey_.empty(); }
    bool IsExpired() const;
    bool IsExpiredOrEmpty() const { return IsEmpty() || IsExpired(); }

    void SetAWSAccessKeyId(const Aws::String& accessKeyId) { accessKeyId_ = accessKeyId; }
    void SetAWSSecretKey(const Aws::String& secretKey) { secretKey_ = secretKey; }
    void SetSessionToken(const Aws::String& sessionToken) { sessionToken_ = sessionToken; }
    void SetExpiration(const Aws::Utils::DateTime& expiration) { expiration_ = expiration; }

private:
    Aws::String accessKeyId_;
    Aws::String secretKey_;
    Aws::String sessionToken_;
    Aws::Utils::DateTime expiration_;
};

}  // namespace Aws::Auth
