#pragma once

#include <aws/core/auth/AWSCredentials.h>

#include <optional>
#include <string_view>

namespace standin::aws {

/// Reads the document in which the instance metadata service gives a role's credentials ("Retrieve security
/// credentials from instance metadata" in the EC2 user guide). Nothing for a text that isn't JSON; what is
/// missing, or no text, is empty. Without an expiration that can be read, they don't expire.
std::optional<Aws::Auth::AWSCredentials> parseRoleCredentials(std::string_view document);

}  // namespace standin::aws
