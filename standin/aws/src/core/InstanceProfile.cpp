#include "core/InstanceProfile.hpp"

#include <random>

#include "core/RoleCredentials.hpp"

namespace standin::aws {
namespace {

using Aws::Utils::DateTime;

/// Differs from machine to machine, so that a service that comes back isn't asked by all at once.
std::chrono::milliseconds pause() {
    constexpr int shortestMs = 5 * 60 * 1000;
    constexpr int longestMs = 10 * 60 * 1000;
    std::random_device random;
    return std::chrono::milliseconds(std::uniform_int_distribution(shortestMs, longestMs)(random));
}

}  // namespace

void InstanceProfile::load() {
    if (DateTime::Now() < leftAloneUntil_) return;
    const auto given = parseRoleCredentials(metadata_->credentials());
    if (!given) return;
    if (given->IsExpired()) {
        leftAloneUntil_ = DateTime::Now() + pause();
        return;
    }
    credentials_ = {given->GetAWSAccessKeyId(), given->GetAWSSecretKey(), given->GetSessionToken()};
    metadata_->region();  // asked for with the first credentials, and then known
}

}  // namespace standin::aws
