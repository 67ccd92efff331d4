#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <storage/cloudprovider/CloudException.hpp>
#include <string>
#include <typeinfo>

namespace testsupport {

inline const std::optional<std::u16string> noIdentifier;

inline std::string inAscii(const std::optional<std::u16string>& identifier) {
    return identifier ? std::string(identifier->begin(), identifier->end()) : "none";
}

inline std::optional<std::u16string> identifierOf(const storage::cloudprovider::CloudException& failure) {
    if (!failure.context()) return std::nullopt;
    return failure.context()->text();
}

/// Expects that `action` throws exactly `Failure` (no class derived from it) with that identifier.
template <class Failure, class Action>
void expectFailure(const std::optional<std::u16string>& identifier, Action&& action) {
    try {
        action();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const storage::cloudprovider::CloudException& failure) {
        EXPECT_EQ(typeid(failure), typeid(Failure)) << "thrown: " << failure.what();
        EXPECT_EQ(inAscii(identifierOf(failure)), inAscii(identifier));
    }
}

}  // namespace testsupport
