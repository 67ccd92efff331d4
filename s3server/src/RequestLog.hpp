#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <vector>

#include "s3server/RequestRecord.hpp"

namespace s3server {

/// What was asked and answered so far. Every member may be called from any thread.
class RequestLog {
public:
    explicit RequestLog(std::function<void(const RequestRecord&)> told) : told_(std::move(told)) {}

    /// Gives back a number to complete the record by.
    std::uint64_t add(RequestRecord record);
    /// No more than that of the answer's body was sent in the end.
    void correct(std::uint64_t number, std::uint64_t responseBytes);
    std::vector<RequestRecord> records() const;
    void forget();

private:
    const std::function<void(const RequestRecord&)> told_;
    mutable std::mutex mutex_;
    std::map<std::uint64_t, RequestRecord> records_;
    std::uint64_t last_ = 0;
};

}  // namespace s3server
