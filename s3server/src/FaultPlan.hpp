#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <list>
#include <mutex>
#include <optional>
#include <string_view>

#include "Request.hpp"
#include "s3server/Fault.hpp"

namespace s3server {

/// The faults still to come. Every member may be called from any thread.
class FaultPlan {
public:
    void add(Fault fault);
    std::size_t left() const;

    /// What is to befall this request, if anything; counts it.
    std::optional<fault::Action> take(std::string_view operation, const Request& request);

    /// Returns after that time, or at once when the plan is ended.
    void wait(std::chrono::milliseconds time);
    /// Returns when release() is called, or at once when the plan is ended.
    void waitForRelease();
    void release();
    /// Lets everybody go who waits now or later.
    void end();

private:
    struct Entry {
        Fault fault;
        unsigned toSkip;
        unsigned left;
    };

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::list<Entry> entries_;
    std::size_t releases_ = 0;
    bool ended_ = false;
};

}  // namespace s3server
