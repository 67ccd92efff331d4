#include "s3server/Fault.hpp"

namespace s3server {
namespace {

bool agrees(const std::optional<std::string>& wanted, std::string_view actual) {
    return !wanted || *wanted == actual;
}

}  // namespace

Fault Fault::status(int status, std::string code) {
    return Fault(fault::Status{status, std::move(code)});
}

Fault Fault::errorIn200(std::string code) {
    return Fault(fault::ErrorIn200{std::move(code)});
}

Fault Fault::reply(int status, Headers headers, std::string body) {
    return Fault(fault::Reply{status, std::move(headers), std::move(body)});
}

Fault Fault::cutAfter(std::uint64_t bytes) {
    return Fault(fault::CutAfter{bytes});
}

Fault Fault::resetAfterHeaders() {
    return Fault(fault::ResetAfterHeaders{});
}

Fault Fault::reset() {
    return Fault(fault::Reset{});
}

Fault Fault::closeWithoutReply() {
    return Fault(fault::CloseWithoutReply{});
}

Fault Fault::delay(std::chrono::milliseconds time) {
    return Fault(fault::Delay{time});
}

Fault Fault::stall() {
    return Fault(fault::Stall{});
}

Fault& Fault::on(std::string operation) {
    operation_ = std::move(operation);
    return *this;
}

Fault& Fault::inBucket(std::string bucket) {
    bucket_ = std::move(bucket);
    return *this;
}

Fault& Fault::forKey(std::string key) {
    key_ = std::move(key);
    return *this;
}

Fault& Fault::withMethod(std::string method) {
    method_ = std::move(method);
    return *this;
}

Fault& Fault::skip(unsigned requests) {
    skip_ = requests;
    return *this;
}

Fault& Fault::times(unsigned requests) {
    times_ = requests;
    return *this;
}

bool Fault::matches(std::string_view operation, std::string_view method, std::string_view bucket,
                    std::string_view key) const {
    return agrees(operation_, operation) && agrees(method_, method) && agrees(bucket_, bucket) &&
           agrees(key_, key);
}

}  // namespace s3server
