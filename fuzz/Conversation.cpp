#include "Conversation.hpp"

#include <algorithm>

#include "FuzzTarget.hpp"
#include "HttpAnswers.hpp"
#include "ServerWire.hpp"
#include "TestBucket.hpp"
#include "http/Session.hpp"

namespace fuzz {
namespace {

using namespace s3server;

struct Outcome {
    std::string received;
    std::vector<RequestRecord> requests;
};

Outcome serve(std::string_view bytes, std::size_t step, const Options& options) {
    Service service(options);
    fill(service.store());
    FaultPlan faults;
    RequestLog log({}, options.rememberedRequests);
    ServerWire wire(bytes, step);
    serveConnection(wire, {service, faults, log}, 1);
    require(!wire.wasReset(), "a connection ends in an orderly way");
    return {wire.received(), log.records()};
}

bool isSameRequest(const RequestRecord& left, const RequestRecord& right) {
    return left.operation == right.operation && left.target == right.target && left.status == right.status &&
           left.bodyBytes == right.bodyBytes;
}

/// A head that breaks off may be refused before the connection ends, or not, by how much of it was seen at
/// once.
std::vector<RequestRecord> readable(std::vector<RequestRecord> requests) {
    if (!requests.empty() && requests.back().method.empty()) requests.pop_back();
    return requests;
}

bool areSameRequests(const std::vector<RequestRecord>& left, const std::vector<RequestRecord>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), isSameRequest);
}

}  // namespace

std::string converse(std::string_view bytes, const Options& options) {
    const Outcome atOnce = serve(bytes, bytes.size(), options);
    requireAnswers(atOnce.received, atOnce.requests);
    const Outcome oneByOne = serve(bytes, 1, options);
    require(areSameRequests(readable(atOnce.requests), readable(oneByOne.requests)),
            "answers don't depend on how bytes arrive");
    return atOnce.received;
}

}  // namespace fuzz
