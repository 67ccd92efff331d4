#include <aws/core/auth/AWSCredentials.h>
#include <aws/core/auth/AWSCredentialsProvider.h>

#include <utility>

namespace Aws::Auth {
namespace {

Aws::Utils::DateTime never() {
    return std::chrono::system_clock::time_point::max();
}

}  // namespace

AWSCredentials::AWSCredentials() : expiration_(never()) {}

AWSCredentials::AWSCredentials(Aws::String accessKeyId, Aws::String secretKey, Aws::String sessionToken)
    : AWSCredentials(std::move(accessKeyId), std::move(secretKey), std::move(sessionToken), never()) {}

AWSCredentials::AWSCredentials(Aws::String accessKeyId, Aws::String secretKey, Aws::String sessionToken,
                               Aws::Utils::DateTime expiration)
    : accessKeyId_(std::move(accessKeyId)),
      secretKey_(std::move(secretKey)),
      sessionToken_(std::move(sessionToken)),
      expiration_(expiration) {}

bool AWSCredentials::operator==(const AWSCredentials& other) const {
    return accessKeyId_ == other.accessKeyId_ && secretKey_ == other.secretKey_ &&
           sessionToken_ == other.sessionToken_ && expiration_ == other.expiration_;
}

bool AWSCredentials::IsExpired() const {
    return expiration_ <= Aws::Utils::DateTime::Now();
}

bool AWSCredentialsProvider::IsTimeToRefresh(long reloadFrequencyMs) {
    return Aws::Utils::DateTime::CurrentTimeMillis() - lastLoadedMs_ > reloadFrequencyMs;
}

void AWSCredentialsProvider::Reload() {
    lastLoadedMs_ = Aws::Utils::DateTime::CurrentTimeMillis();
}

}  // namespace Aws::Auth
