#pragma once

#include <filesystem>

namespace replay {

/// The environment of the recording: an empty home folder, no variable of the SDK, of proxies or of
/// certificate stores, metadata lookup off. Make it before there are threads; it doesn't put the old
/// environment back.
class CleanEnvironment {
public:
    CleanEnvironment();
    ~CleanEnvironment();
    CleanEnvironment(const CleanEnvironment&) = delete;
    CleanEnvironment& operator=(const CleanEnvironment&) = delete;

private:
    std::filesystem::path home_;
};

}  // namespace replay
