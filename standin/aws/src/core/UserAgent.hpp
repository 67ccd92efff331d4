#pragma once

#include <string>

namespace standin::aws {

/// What a client says of itself, in the SDK's words: a service may tell clients apart by them. Ends with
/// AWS_EXECUTION_ENV, and the application's id by AWS_SDK_UA_APP_ID or the profile's `sdk_ua_app_id`, where
/// these are set; in both, a character that would end the word is replaced by "_". Reads the environment.
std::string userAgent(const std::string& retryStrategyName);

}  // namespace standin::aws
