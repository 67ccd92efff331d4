#pragma once

#include <string>

namespace storage::s3provider {

/// Reads a decimal number by the rules of std::stoi: leading white space and a sign are accepted, reading
/// stops at the first character that is not a digit. The messages are the same on every platform, since
/// they end up in the log.
/// Throws std::invalid_argument "invalid stoi argument" when there is no digit, std::out_of_range
/// "stoi argument out of range" when the number does not fit 32 bits with sign.
int parseInt(const std::string& text);

}  // namespace storage::s3provider
