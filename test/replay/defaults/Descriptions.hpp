#pragma once

#include "replay/RecordedCase.hpp"

#include <aws/core/auth/AWSCredentials.h>
#include <aws/core/client/ClientConfiguration.h>

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

/// The members that the stand-in has as well, and what the retry strategy says.
Json describe(const Aws::Client::ClientConfiguration& configuration);

/// The members of `all` that `wanted` has: what isn't in a case isn't compared.
Json only(const Json& wanted, const Json& all);

}  // namespace replay
