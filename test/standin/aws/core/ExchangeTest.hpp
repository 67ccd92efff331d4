#pragma once

#include "core/Exchange.hpp"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "support/servers/ScriptedServer.hpp"

/// An Exchange that talks to a server of canned replies, plain HTTP, one retry without delay.
class ExchangeTest : public ::testing::Test {
protected:
    ExchangeTest();

    standin::aws::ExchangeRequest get(const std::string& path = "/b/k") const;
    standin::aws::ExchangeRequest put(const std::string& body) const;

    /// Sends with a new Exchange made of `configuration` and `credentials`. All connections have ended when
    /// it returns.
    standin::aws::ExchangeOutcome send(const standin::aws::ExchangeRequest& request);

    std::vector<testsupport::SeenRequest> seen() const { return server.requests(); }

    testsupport::ScriptedServer server;
    Aws::Client::ClientConfiguration configuration;
    std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentials;
};

/// 2xx is a success; of the rest, 5xx is worth another attempt. Error and reply name the answer's body.
std::unique_ptr<standin::aws::ExchangeError> judgeByStatus(standin::aws::ExchangeReply& reply);

std::string bodyOf(const standin::aws::ExchangeOutcome& outcome);

/// The names of a request's headers in the order sent.
std::vector<std::string> headerNames(const testsupport::SeenRequest& request);
