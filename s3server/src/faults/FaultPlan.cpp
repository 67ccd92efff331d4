#include "faults/FaultPlan.hpp"

#include <numeric>
#include <utility>

namespace s3server {

namespace {

void append(std::list<Fault>& plan, std::vector<Fault> faults) {
    for (Fault& fault : faults)
        if (fault.repetitions() != 0) plan.push_back(std::move(fault));
}

}  // namespace

void FaultPlan::add(std::vector<Fault> faults) {
    const std::lock_guard lock(mutex_);
    append(faults_, std::move(faults));
}

std::size_t FaultPlan::left() const {
    const std::lock_guard lock(mutex_);
    return std::accumulate(faults_.begin(), faults_.end(), std::size_t{0},
                           [](std::size_t sum, const Fault& fault) { return sum + fault.repetitions(); });
}

std::vector<Fault> FaultPlan::faults() const {
    const std::lock_guard lock(mutex_);
    return {faults_.begin(), faults_.end()};
}

void FaultPlan::replace(std::vector<Fault> faults) {
    const std::lock_guard lock(mutex_);
    faults_.clear();
    append(faults_, std::move(faults));
    ++releases_;
    changed_.notify_all();
}

std::optional<FaultPlan::Taken> FaultPlan::take(std::string_view operation, const Request& request) {
    const std::lock_guard lock(mutex_);
    for (auto fault = faults_.begin(); fault != faults_.end(); ++fault) {
        if (!fault->matches(operation, request.method, request.bucket, request.key)) continue;
        if (fault->skipped() != 0) {
            fault->skip(fault->skipped() - 1);
            continue;
        }
        Taken taken{fault->action(), releases_};
        fault->times(fault->repetitions() - 1);
        if (fault->repetitions() == 0) faults_.erase(fault);
        return taken;
    }
    return std::nullopt;
}

bool FaultPlan::wait(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return !changed_.wait_for(lock, time, [this] { return ended_; });
}

bool FaultPlan::waitForRelease(std::size_t releases) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this, releases] { return ended_ || releases_ > releases; });
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
