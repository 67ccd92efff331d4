#pragma once

#include "replay/RecordedCase.hpp"

#include <aws/core/auth/AWSCredentials.h>

namespace replay {

/// "max" stands for an expiration that never comes.
inline Json describe(const Aws::Auth::AWSCredentials& credentials) {
    const bool never = credentials.GetExpiration() == Aws::Auth::AWSCredentials().GetExpiration();
    return {{"access_key", credentials.GetAWSAccessKeyId()},
            {"secret_key", credentials.GetAWSSecretKey()},
            {"session_token", credentials.GetSessionToken()},
            {"is_empty", credentials.IsEmpty()},
            {"expiration", never ? Json("max") : Json(credentials.GetExpiration().Millis())}};
}

}  // namespace replay
