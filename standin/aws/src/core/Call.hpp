#pragma once

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/ClientConfiguration.h>

#include <memory>
#include <string>

#include "core/ConnectionPool.hpp"
#include "core/CurlGlobal.hpp"
#include "core/Exchange.hpp"
#include "core/RequestBody.hpp"
#include "core/RequestTarget.hpp"
#include "core/Retries.hpp"
#include "core/ServerClock.hpp"
#include "core/Signer.hpp"

namespace standin::aws {

/// What all calls of a client share. Every part is thread-safe.
struct ClientState {
    ClientState(const Aws::Client::ClientConfiguration& clientConfiguration,
                std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentialsProvider);

    const CurlGlobal curl;
    const Aws::Client::ClientConfiguration configuration;  ///< its retry strategy is never null
    const std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentials;
    const std::string userAgent;  ///< up to the service's part, unless that is there
    ConnectionPool connections;
    ServerClock clock;
    Signer signer;
};

/// One call on its way through its attempts: what is decided once, and what answers taught about the next.
class Call {
public:
    /// Measures the body and makes its digests. Throws UnsendableRequest.
    Call(ClientState& client, const ExchangeRequest& request, const AnswerJudge& judge);

    /// Signs and sends once. Throws UnsendableRequest, and what the credentials provider throws.
    Attempt attempt(long retries);

private:
    WireRequest prepare(long retries);
    Headers unsignedHeaders(long retries) const;
    std::string attemptHeader(long retries) const;
    bool signsPayload() const;
    std::string payloadHash() const;
    WireAnswer transfer(WireRequest request) const;
    Attempt judge(WireAnswer answer);
    Attempt failed(const ExchangeError& error, int status, const WireAnswer& answer,
                   const ExchangeReply& reply);
    bool learnTime(const Headers& headers);
    bool learnRegion(int status, const Headers& headers, const std::string& named);
    void learnHost(const Headers& headers, const std::string& named);

    ClientState& client_;
    const ExchangeRequest& request_;
    const AnswerJudge& judge_;
    RequestBody body_;
    bool sendsBody_;
    BodyDigests digests_;
    RequestTarget target_;
    std::string invocationId_;
    std::string authority_;  ///< for the next attempt
    std::string region_;
    bool knowsRegion_ = false;
    bool knowsServerTime_ = false;
    bool usesSessionToken_ = false;
};

}  // namespace standin::aws
