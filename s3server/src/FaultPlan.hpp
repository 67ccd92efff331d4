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

    /// Returns true after that time, false as soon as the plan is ended.
    [[nodiscard]] bool wait(std::chrono::milliseconds time);
    /// Returns true when release() is called, false as soon as the plan is ended.
    [[nodiscard]] bool waitForRelease();
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
