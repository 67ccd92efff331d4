#include "Report.hpp"

#include <iostream>
#include <map>

namespace demo {

namespace {

struct Traffic {
    std::size_t requests = 0;
    std::uint64_t sent = 0;
    std::uint64_t received = 0;
};

}  // namespace

void Report::step(const std::string& title) {
    server_.forgetRequests();
    std::cout << "\n== " << title << "\n";
}

void Report::say(const std::string& text) const {
    std::cout << "   " << text << "\n";
}

void Report::check(bool passed, const std::string& what) {
    std::cout << (passed ? "   ok    " : "   WRONG ") << what << "\n";
    if (passed) {
        ++passed_;
    } else {
        failed_.push_back(what);
    }
}

void Report::wire() const {
    std::map<std::string, Traffic> byOperation;
    for (const auto& request : server_.requests()) {
        auto& traffic = byOperation[request.operation];
        ++traffic.requests;
        traffic.sent += request.bodyBytes;
        traffic.received += request.responseBytes;
    }
    for (const auto& [operation, traffic] : byOperation) {
        std::cout << "   wire  " << traffic.requests << " x " << operation << ", " << traffic.sent
                  << " bytes up, " << traffic.received << " bytes down\n";
    }
}

bool Report::verdict() const {
    std::cout << "\n";
    if (failed_.empty()) {
        std::cout << "demo: all " << passed_ << " checks passed\n";
        return true;
    }
    for (const auto& what : failed_)
        std::cout << "demo: WRONG: " << what << "\n";
    std::cout << "demo: " << failed_.size() << " of " << failed_.size() + passed_ << " checks failed\n";
    return false;
}

}  // namespace demo
