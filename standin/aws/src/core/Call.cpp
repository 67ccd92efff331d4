#include "core/Call.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

#include <algorithm>
#include <array>
#include <utility>

#include "core/InvocationId.hpp"
#include "core/Redirects.hpp"
#include "core/RequestChecks.hpp"
#include "core/Text.hpp"
#include "core/UnsendableRequest.hpp"

namespace standin::aws {
namespace {

using Aws::Client::ClientConfiguration;
using Aws::Client::CoreErrors;
using Aws::Client::FollowRedirectsPolicy;
using Aws::Http::HttpMethod;
using Aws::Http::HttpResponseCode;

/// A region by this name stands for all: answers tell the bucket's own, and redirects are left to that.
constexpr std::string_view anyRegion = "aws-global";

constexpr std::string_view sha256OfNothing =
    "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";

bool methodCarriesBody(HttpMethod method) {
    return method == HttpMethod::HTTP_PUT || method == HttpMethod::HTTP_POST ||
           method == HttpMethod::HTTP_PATCH;
}

bool follows(const ClientConfiguration& configuration) {
    switch (configuration.followRedirects) {
        case FollowRedirectsPolicy::ALWAYS:
            return true;
        case FollowRedirectsPolicy::NEVER:
            return false;
        case FollowRedirectsPolicy::DEFAULT:
            break;
    }
    return configuration.region != anyRegion;
}

/// What is too long once is too long again; anything else may pass.
ExchangeError transferError(CURLcode code) {
    if (code == CURLE_FILESIZE_EXCEEDED)
        return {CoreErrors::NETWORK_CONNECTION, "", "The response's body is longer than it may be", false};
    return {CoreErrors::NETWORK_CONNECTION, "",
            "curlCode: " + std::to_string(code) + ", " + curl_easy_strerror(code), true};
}

/// A failure that the clock explains is told bare: worth another attempt, without what the answer's sender
/// said of it.
ExchangeError explainedByClock(const ExchangeError& error) {
    ExchangeError bare(error.GetErrorType(), error.GetExceptionName(), error.GetMessage(), true);
    bare.SetResponseHeaders(error.GetResponseHeaders());
    bare.SetResponseCode(error.GetResponseCode());
    return bare;
}

std::string withService(const std::string& userAgent, const std::string& serviceId) {
    const std::string word = "api/" + serviceId;
    return userAgent.find(word) != std::string::npos ? userAgent : userAgent + ' ' + word;
}

}  // namespace

ClientState::ClientState(const ClientConfiguration& clientConfiguration,
                         std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentialsProvider)
    : configuration([&] {
          ClientConfiguration complete = clientConfiguration;
          if (!complete.retryStrategy) {
              complete.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>();
          }
          return complete;
      }()),
      credentials(std::move(credentialsProvider)),
      userAgent(configuration.userAgent.empty() ? Aws::Client::ComputeUserAgentString(&configuration)
                                                : configuration.userAgent),
      connections(configuration) {}

Call::Call(ClientState& client, const ExchangeRequest& request, const AnswerJudge& judge)
    : client_(client),
      request_(request),
      judge_(judge),
      body_(request.body, contentLength(request.headers)),
      sendsBody_(request.body != nullptr || methodCarriesBody(request.method)),
      target_(encodeTarget(request.path, request.subresource, request.query)),
      invocationId_(makeInvocationId()),
      authority_(request.authority),
      region_(request.signingRegion) {
    if (!isAuthority(authority_)) throw UnsendableRequest("The request's host is not a host name or address");
    digests_ = body_.digests(signsPayload() && body_.size() > 0, request.sendMd5);
}

Attempt Call::attempt(long retries) {
    return judge(transfer(prepare(retries)));
}

WireRequest Call::prepare(long retries) {
    const auto credentials = client_.credentials->GetAWSCredentials();
    usesSessionToken_ = !credentials.GetSessionToken().empty();
    WireRequest wire;
    wire.method = request_.method;
    wire.url = request_.scheme + "://" + authority_ + target_.onWire();
    wire.headers = unsignedHeaders(retries);
    wire.body = sendsBody_ ? &body_ : nullptr;
    wire.answersContent = request_.answersContent;
    client_.signer.sign(wire.headers,
                        {Aws::Http::HttpMethodMapper::GetNameForHttpMethod(request_.method), target_, region_,
                         request_.signingName, payloadHash(), client_.clock.now()},
                        credentials);
    checkHeaders(wire.headers);
    return wire;
}

Headers Call::unsignedHeaders(long retries) const {
    Headers headers;
    for (const auto& [name, value] : request_.headers)
        headers.emplace(name, trimmed(value));
    headers["host"] = authority_;
    headers["amz-sdk-invocation-id"] = invocationId_;
    headers["amz-sdk-request"] = attemptHeader(retries);
    headers["user-agent"] = trimmed(withService(client_.userAgent, request_.serviceId));
    if (sendsBody_) headers["content-length"] = std::to_string(body_.size());
    if (request_.sendMd5) headers["content-md5"] = digests_.md5;
    return headers;
}

/// Tells the service which attempt this is and, once its clock is known, until when an answer is of use.
std::string Call::attemptHeader(long retries) const {
    std::string text = "attempt=" + std::to_string(retries + 1);
    if (retries == 0) return text;
    const long most = client_.configuration.retryStrategy->GetMaxAttempts();
    if (most > 0) text += "; max=" + std::to_string(most);
    if (!knowsServerTime_) return text;
    const auto until =
        client_.clock.now() + std::chrono::milliseconds(client_.configuration.requestTimeoutMs);
    return "ttl=" + until.ToGmtString(Aws::Utils::DateFormat::ISO_8601_BASIC) + "; " + text;
}

/// TLS protects a body as well as a signature does.
bool Call::signsPayload() const {
    return request_.scheme == "http" || request_.signPayload;
}

std::string Call::payloadHash() const {
    if (!signsPayload()) return "UNSIGNED-PAYLOAD";
    return body_.size() > 0 ? digests_.sha256 : std::string(sha256OfNothing);
}

WireAnswer Call::transfer(WireRequest request) const {
    const ConnectionPool::Lease connection = client_.connections.acquire();
    if (follows(client_.configuration)) return sendFollowing(*connection, std::move(request));
    WireAnswer answer;
    connection->perform(request, answer);
    return answer;
}

Attempt Call::judge(WireAnswer answer) {
    ExchangeReply reply;
    if (answer.code != CURLE_OK) {
        const int noStatus = static_cast<int>(HttpResponseCode::REQUEST_NOT_MADE);
        return failed(transferError(answer.code), noStatus, answer, reply);
    }
    reply.status = answer.status;
    reply.headers = answer.headers;
    reply.remoteAddress = answer.remoteAddress;
    reply.body = std::move(answer.body);
    const auto error = judge_(reply);
    if (!error) return {std::move(reply)};
    return failed(*error, answer.status, answer, reply);
}

Attempt Call::failed(const ExchangeError& error, int status, const WireAnswer& answer,
                     const ExchangeReply& reply) {
    ExchangeError complete = error;
    complete.SetResponseCode(static_cast<HttpResponseCode>(status));
    complete.SetResponseHeaders(answer.headers);
    complete.SetRemoteHostIpAddress(answer.remoteAddress);
    learnHost(answer.headers, reply.otherHost);
    const bool regionWasWrong = learnRegion(status, answer.headers, reply.otherRegion);
    const bool clockWasWrong = learnTime(answer.headers);
    if (clockWasWrong) complete = explainedByClock(complete);
    if (regionWasWrong) return {std::move(complete), Correction::Region};
    return {std::move(complete), clockWasWrong ? Correction::Time : Correction::None};
}

/// True when the clock was wrong.
bool Call::learnTime(const Headers& headers) {
    const auto time = serverTime(headers);
    knowsServerTime_ = time.has_value();
    return time && client_.configuration.enableClockSkewAdjustment && client_.clock.adjustTo(*time);
}

/// Once a call, so that two regions can't send it to and fro. True when the region was another.
bool Call::learnRegion(int status, const Headers& headers, const std::string& named) {
    constexpr std::array<int, 4> statuses = {301, 307, 400, 403};
    const bool mayName = std::find(statuses.begin(), statuses.end(), status) != statuses.end();
    if (client_.configuration.region != anyRegion || knowsRegion_ || !mayName) return false;
    const auto header = headers.find("x-amz-bucket-region");
    const std::string region = header != headers.end() ? header->second : named;
    if (region.empty() || region == region_) return false;
    region_ = region;
    knowsRegion_ = true;
    return true;
}

/// The next attempt, and no other, is signed for the host that the answer names, at the port of the first. A
/// session token stays with the host it was meant for, and a signature without it would be worth nothing.
void Call::learnHost(const Headers& headers, const std::string& named) {
    const auto location = headers.find("location");
    const std::string host = hostOf(location != headers.end() ? location->second : named);
    const bool taken = isAuthority(host) && !usesSessionToken_;
    authority_ = taken ? withHost(request_.authority, host) : request_.authority;
}

}  // namespace standin::aws
