#pragma once

#include <optional>
#include <string>

#include "operations/S3Error.hpp"

namespace s3server::test {

/// The error that the action throws; none if it throws none.
template <class Action>
std::optional<S3Error> refusalOf(const Action& action) {
    try {
        action();
        return std::nullopt;
    } catch (const S3Error& error) {
        return error;
    }
}

/// The code of that error, "" for none.
template <class Action>
std::string codeOf(const Action& action) {
    const auto error = refusalOf(action);
    return error ? error->code() : std::string();
}

}  // namespace s3server::test
