#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <list>
#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

#include "http/Request.hpp"
#include "s3server/Fault.hpp"

namespace s3server {

/// The faults still to come. Every member may be called from any thread.
class FaultPlan {
public:
    struct Taken {
        fault::Action action;
        /// How often release() had been called by then.
        std::size_t releases;
    };

    void add(std::vector<Fault> faults);
    std::size_t left() const;
    /// With what is left of their skips and times.
    std::vector<Fault> faults() const;
    /// Plans these instead of what is left, and releases.
    void replace(std::vector<Fault> faults);

    /// The fault that this request gets, if any; counts it.
    std::optional<Taken> take(std::string_view operation, const Request& request);

    /// Returns true after that time, false as soon as the plan is ended.
    [[nodiscard]] bool wait(std::chrono::milliseconds time);
    /// Returns true when release() has been called more often than that, false as soon as the plan is ended.
    [[nodiscard]] bool waitForRelease(std::size_t releases);
    void release();
    /// Lets everybody go who waits now or later.
    void end();

private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    // In the order planned, each with what is left of it.
    std::list<Fault> faults_;
    std::size_t releases_ = 0;
    bool ended_ = false;
};

}  // namespace s3server
