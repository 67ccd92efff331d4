#include "framework/FailureLog.hpp"

#include <exception>

namespace cppmicroservices::detail {

void FailureLog::report(const std::string& component, const char* failure) noexcept {
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

}  // namespace cppmicroservices::detail
