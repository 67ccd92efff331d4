#include "FaultPlan.hpp"

#include <utility>

namespace s3server {

void FaultPlan::add(Fault fault) {
    const std::lock_guard lock(mutex_);
    const unsigned skip = fault.skipped();
    const unsigned times = fault.repetitions();
    if (times != 0) entries_.push_back({std::move(fault), skip, times});
}

std::size_t FaultPlan::left() const {
    const std::lock_guard lock(mutex_);
    std::size_t sum = 0;
    for (const Entry& entry : entries_)
        sum += entry.left;
    return sum;
}

std::optional<fault::Action> FaultPlan::take(std::string_view operation, const Request& request) {
    const std::lock_guard lock(mutex_);
    for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
        if (!entry->fault.matches(operation, request.method, request.bucket, request.key)) continue;
        if (entry->toSkip != 0) {
            --entry->toSkip;
            continue;
        }
        fault::Action action = entry->fault.action();
        if (--entry->left == 0) entries_.erase(entry);
        return action;
    }
    return std::nullopt;
}

bool FaultPlan::wait(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return !changed_.wait_for(lock, time, [this] { return ended_; });
}

bool FaultPlan::waitForRelease() {
    std::unique_lock lock(mutex_);
    const std::size_t before = releases_;
    changed_.wait(lock, [this, before] { return ended_ || releases_ != before; });
    return !ended_;
}

void FaultPlan::release() {
    const std::lock_guard lock(mutex_);
    ++releases_;
    changed_.notify_all();
}

void FaultPlan::end() {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    changed_.notify_all();
}

}  // namespace s3server
