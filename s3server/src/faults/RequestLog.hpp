#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <vector>

#include "s3server/RequestRecord.hpp"

namespace s3server {

/// The latest requests with their answers, and how many there were. Every member may be called from any
/// thread.
class RequestLog {
public:
    /// Keeps at most `kept` records.
    RequestLog(std::function<void(const RequestRecord&)> told, std::size_t kept)
        : told_(std::move(told)), kept_(kept) {}

    /// Gives back a number to complete the record by.
    std::uint64_t add(RequestRecord record);
    /// No more than that of the answer's body was sent in the end.
    void correct(std::uint64_t number, std::uint64_t responseBytes);
    std::vector<RequestRecord> records() const;
    RequestCounts counts() const;
    void forget();

private:
    const std::function<void(const RequestRecord&)> told_;
    const std::size_t kept_;
    mutable std::mutex mutex_;
    std::map<std::uint64_t, RequestRecord> records_;
    std::uint64_t last_ = 0;
    // Small: there are few operations, and few statuses of each.
    RequestCounts counts_;
};

}  // namespace s3server
