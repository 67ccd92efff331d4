#pragma once

#include <cstdint>
#include <string>

namespace storage::s3provider {

/// Reads a decimal number by the rules of std::stoi: leading white space and a sign are accepted, reading
/// stops at the first character that is not a digit. The messages are the same on every platform, since
/// they end up in the log.
/// Throws std::invalid_argument "invalid stoi argument" when there is no digit, std::out_of_range
/// "stoi argument out of range" when the number does not fit 32 bits with sign.
int parseInt(const std::string& text);

/// A number that an environment variable holds.
struct NumberSetting {
    const char* variable;
    std::int64_t defaultValue;
};

/// The number that a setting has now, which parseInt() reads; no other check is made. The default when the
/// variable isn't set or is empty, and when reading fails in whatever way: then `reportFailure` is called
/// first, while the exception is the current one. Any thread, as long as none changes the environment.
std::int64_t readNumber(const NumberSetting& setting, void (*reportFailure)(const NumberSetting&));

}  // namespace storage::s3provider
