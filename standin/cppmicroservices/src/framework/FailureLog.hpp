#pragma once

#include <exception>
#include <mutex>
#include <ostream>
#include <string>

namespace cppmicroservices::detail {

/// Where failures go that there is nobody to throw at. Any thread.
class FailureLog {
public:
    explicit FailureLog(std::ostream& stream) : stream_(stream) {}

    /// Writes one line: the component, what it can't do ("can't be activated"), and what the exception says
    /// that is handled at the moment.
    void report(const std::string& component, const char* failure) noexcept {
        const std::lock_guard lock(mutex_);
        stream_ << "component " << component << ' ' << failure;
        try {
            throw;
        } catch (const std::exception& error) {
            stream_ << ": " << error.what();
        } catch (...) {
            // It says nothing more.
        }
        stream_ << std::endl;
    }

private:
    std::mutex mutex_;
    std::ostream& stream_;
};

}  // namespace cppmicroservices::detail
