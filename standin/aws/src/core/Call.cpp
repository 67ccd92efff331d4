#include "core/Call.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

#include <utility>

#include "core/InvocationId.hpp"
#include "core/Redirects.hpp"
#include "core/RequestChecks.hpp"
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

/// As libcurl puts it into the Host header: without the scheme's own port.
std::string hostHeader(const std::string& scheme, const std::string& authority) {
    return authorityOf(scheme + "://" + authority);
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

ExchangeError transferError(CURLcode code) {
    return {CoreErrors::NETWORK_CONNECTION, "",
            "curlCode: " + std::to_string(code) + ", " + curl_easy_strerror(code), true};
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
      userAgent(Aws::Client::ComputeUserAgentString(&configuration)),
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
                        {Aws::Http::HttpMethodMapper::GetNameForHttpMethod(request_.method),
                         hostHeader(request_.scheme, authority_), target_, region_, request_.signingName,
                         payloadHash(), client_.clock.now()},
                        credentials);
    checkHeaders(wire.headers);
    return wire;
}

Headers Call::unsignedHeaders(long retries) const {
    const ClientConfiguration& configuration = client_.configuration;
    Headers headers = request_.headers;
    headers["amz-sdk-invocation-id"] = invocationId_;
    headers["amz-sdk-request"] = attemptHeader(retries);
    headers["user-agent"] = !configuration.userAgent.empty()
                                ? configuration.userAgent
                                : client_.userAgent + " api/" + request_.serviceId;
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
        const bool corrected = learnFrom(answer.headers, reply);
        return {
            failure(transferError(answer.code), static_cast<int>(HttpResponseCode::REQUEST_NOT_MADE), answer),
            corrected};
    }
    reply.status = answer.status;
    reply.headers = answer.headers;
    reply.remoteAddress = answer.remoteAddress;
    reply.body = std::move(answer.body);
    const auto error = judge_(reply);
    if (!error) return {std::move(reply), false};
    const bool corrected = learnFrom(answer.headers, reply);
    return {failure(*error, answer.status, answer), corrected};
}

ExchangeError Call::failure(const ExchangeError& error, int status, const WireAnswer& answer) const {
    ExchangeError complete = error;
    complete.SetResponseCode(static_cast<HttpResponseCode>(status));
    complete.SetResponseHeaders(answer.headers);
    complete.SetRemoteHostIpAddress(answer.remoteAddress);
    return complete;
}

/// True when the next attempt will differ in what this one may have failed for.
bool Call::learnFrom(const Headers& headers, const ExchangeReply& reply) {
    const auto time = serverTime(headers);
    knowsServerTime_ = time.has_value();
    const bool clockCorrected =
        time && client_.configuration.enableClockSkewAdjustment && client_.clock.adjustTo(*time);
    learnHost(headers, reply.otherHost);
    return learnRegion(headers, reply.otherRegion) || clockCorrected;
}

bool Call::learnRegion(const Headers& headers, const std::string& named) {
    if (client_.configuration.region != anyRegion) return false;
    const auto header = headers.find("x-amz-bucket-region");
    const std::string region = header != headers.end() ? header->second : named;
    if (region.empty() || region == region_) return false;
    region_ = region;
    return true;
}

/// The next attempt is signed for the host that the answer names. A session token stays with the host it
/// was meant for, and a signature without it would be worth nothing: then the host is kept.
void Call::learnHost(const Headers& headers, const std::string& named) {
    const auto location = headers.find("location");
    const std::string authority = authorityOf(location != headers.end() ? location->second : named);
    if (isAuthority(authority) && !usesSessionToken_) authority_ = authority;
}

}  // namespace standin::aws
