#include "support/servers/Conversation.hpp"

namespace testsupport {
namespace {

Script grantTunnel() {
    return {Step::send("HTTP/1.1 200 Connection established\r\n\r\n")};
}

Script refuseUnexpected() {
    return {Step::send(httpReply(599, {{"Content-Type", "application/xml"}, {"Connection", "close"}},
                                 "<Error><Code>UnexpectedRequest</Code>"
                                 "<Message>The test has no script for this request</Message></Error>")),
            Step::close()};
}

}  // namespace

Conversation::Conversation(std::vector<Script> scripts, bool repeatLast) : repeatLast_(repeatLast) {
    for (Script& script : scripts)
        expect(std::move(script));
}

void Conversation::expect(Script script) {
    const std::lock_guard lock(mutex_);
    scripts_.push_back(std::move(script));
}

Conversation::Turn Conversation::begin(SeenRequest head) {
    const std::lock_guard lock(mutex_);
    const bool connect = head.method == "CONNECT";
    requests_.push_back(std::move(head));
    return {requests_.size() - 1, nextScript(connect)};
}

Script Conversation::nextScript(bool connect) {
    const bool repeat = scripts_.empty() && repeatLast_ && !last_.empty();
    if (connect) {
        const bool answered = repeat ? holds<Step::ConnectReply>(last_)
                                     : !scripts_.empty() && holds<Step::ConnectReply>(scripts_.front());
        if (!answered) return grantTunnel();
    }
    if (repeat) return last_;
    if (scripts_.empty()) {
        ++unexpected_;
        return refuseUnexpected();
    }
    last_ = std::move(scripts_.front());
    scripts_.pop_front();
    return last_;
}

void Conversation::recordBody(std::size_t request, std::string body, bool complete) {
    const std::lock_guard lock(mutex_);
    SeenRequest& seen = requests_.at(request);
    seen.body = std::move(body);
    seen.bodyRead = true;
    seen.bodyComplete = complete;
}

std::vector<SeenRequest> Conversation::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

std::size_t Conversation::unusedScripts() const {
    const std::lock_guard lock(mutex_);
    return scripts_.size();
}

std::size_t Conversation::unexpectedRequests() const {
    const std::lock_guard lock(mutex_);
    return unexpected_;
}

}  // namespace testsupport
