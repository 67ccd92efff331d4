#include "integration/FakedClock.hpp"

#include <ctime>
#include <fstream>
#include <iomanip>

namespace testsupport {

std::optional<std::filesystem::path> FakedClock::installedLibrary() {
    for (const auto& folder : std::filesystem::directory_iterator("/usr/lib")) {
        auto library = folder.path() / "faketime" / "libfaketimeMT.so.1";
        std::error_code none;
        if (std::filesystem::exists(library, none)) return library;
    }
    return std::nullopt;
}

FakedClock::FakedClock() {
    show();
}

std::chrono::system_clock::time_point FakedClock::now() const {
    return std::chrono::system_clock::from_time_t(seconds_);
}

void FakedClock::advance(std::chrono::seconds duration) {
    seconds_ += duration.count();
    show();
}

Variables FakedClock::variables() const {
    return {{"LD_PRELOAD", installedLibrary().value().string()},
            {"FAKETIME_TIMESTAMP_FILE", file().string()},
            {"FAKETIME_NO_CACHE", "1"},
            {"FAKETIME_DONT_FAKE_MONOTONIC", "1"},
            {"NO_FAKE_STAT", "1"},
            {"TZ", "UTC"}};
}

// Whole or not at all, as a process may look at any moment.
void FakedClock::show() const {
    const std::time_t seconds = seconds_;
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    const auto draft = folder_.path() / "draft";
    std::ofstream(draft) << std::put_time(&parts, "%Y-%m-%d %H:%M:%S") << '\n';
    std::filesystem::rename(draft, file());
}

}  // namespace testsupport
