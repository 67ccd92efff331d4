#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <optional>

#include "support/process/Process.hpp"
#include "support/process/TemporaryFolder.hpp"

namespace testsupport {

/// A wall clock that stands still until it is moved, for processes below libfaketime: they take its time for
/// the real one, except for waiting and for the times of files. Any thread may read it; one moves it.
class FakedClock {
public:
    /// libfaketime as the system has installed it.
    static std::optional<std::filesystem::path> installedLibrary();

    FakedClock();

    std::chrono::system_clock::time_point now() const;

    /// Takes effect for the processes at once.
    void advance(std::chrono::seconds duration);

    /// What such a process has to have in its environment. The library must be installed.
    Variables variables() const;

private:
    std::filesystem::path file() const { return folder_.path() / "time"; }
    void show() const;

    const TemporaryFolder folder_{"faked-clock"};
    std::atomic<std::time_t> seconds_{1'900'000'000};  // 2030-03-17T17:46:40Z
};

}  // namespace testsupport
