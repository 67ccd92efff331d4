#pragma once

#include "support/Environment.hpp"

#include <filesystem>

namespace replay {

/// The environment of the recording: an empty home folder, no variable of the SDK, of proxies or of
/// certificate stores, metadata lookup off. The old one is back at the end. Not for use while another thread
/// reads the environment.
class CleanEnvironment {
public:
    CleanEnvironment();
    ~CleanEnvironment();
    CleanEnvironment(const CleanEnvironment&) = delete;
    CleanEnvironment& operator=(const CleanEnvironment&) = delete;

private:
    std::filesystem::path home_;
    testsupport::Environment variables_;
};

}  // namespace replay
