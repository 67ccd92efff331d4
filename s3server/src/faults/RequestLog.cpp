#include "faults/RequestLog.hpp"

#include "text/Text.hpp"

namespace s3server {

std::optional<std::string> RequestRecord::header(std::string_view name) const {
    const std::string* const value = findHeader(headers, name);
    return value ? std::optional(*value) : std::nullopt;
}

std::uint64_t RequestLog::add(RequestRecord record) {
    const std::lock_guard lock(mutex_);
    if (told_) told_(record);
    ++counts_[{record.operation, record.status}];
    records_.emplace(++last_, std::move(record));
    if (records_.size() > kept_) records_.erase(records_.begin());
    return last_;
}

void RequestLog::correct(std::uint64_t number, std::uint64_t responseBytes) {
    const std::lock_guard lock(mutex_);
    const auto found = records_.find(number);
    if (found != records_.end()) found->second.responseBytes = responseBytes;
}

std::vector<RequestRecord> RequestLog::records() const {
    const std::lock_guard lock(mutex_);
    std::vector<RequestRecord> records;
    records.reserve(records_.size());
    for (const auto& [number, record] : records_)
        records.push_back(record);
    return records;
}

RequestCounts RequestLog::counts() const {
    const std::lock_guard lock(mutex_);
    return counts_;
}

void RequestLog::forget() {
    const std::lock_guard lock(mutex_);
    records_.clear();
    counts_.clear();
}

}  // namespace s3server
