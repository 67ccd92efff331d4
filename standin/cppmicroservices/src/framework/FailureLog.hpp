#pragma once

#include <mutex>
#include <ostream>
#include <string>

namespace cppmicroservices::detail {

/// Where failures go that there is nobody to throw at. Any thread.
class FailureLog {
public:
    explicit FailureLog(std::ostream& stream) : stream_(stream) {}

    /// Writes one line.
    void report(const std::string& failure) {
        const std::lock_guard lock(mutex_);
        stream_ << failure << std::endl;
    }

private:
    std::mutex mutex_;
    std::ostream& stream_;
};

}  // namespace cppmicroservices::detail
