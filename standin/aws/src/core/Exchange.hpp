#pragma once

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/AWSError.h>
#include <aws/core/client/ClientConfiguration.h>
#include <aws/core/client/CoreErrors.h>
#include <aws/core/http/HttpTypes.h>
#include <aws/core/utils/Outcome.h>

#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// The seam between the service (which knows S3's paths, headers and XML) and the transport (which
/// knows signing, sockets, retries and time).
namespace standin::aws {

/// One service call, unsigned and unencoded. Built once; sent as often as retries ask.
struct ExchangeRequest {
    Aws::Http::HttpMethod method = Aws::Http::HttpMethod::HTTP_GET;
    std::string scheme;       ///< "http" or "https"
    std::string authority;    ///< host or host:port, as in the Host header: without the scheme's own port
    std::string path;         ///< starts with "/", not percent-encoded; sent segment by segment as it stands
    std::string subresource;  ///< a query name without "=", as "uploads" or "location"; empty: none
    std::vector<std::pair<std::string, std::string>> query;  ///< names and values, not percent-encoded
    std::map<std::string, std::string> headers;              ///< the service's own; lower-case names
    std::shared_ptr<std::iostream> body;                     ///< null: no body
    bool sendMd5 = false;                                    ///< adds content-md5, of an empty body too
    bool signPayload = false;        ///< has the body's SHA-256 signed over https as well
    bool answersContent = false;     ///< a success brings an object's bytes; other answers, 16 MiB at most
    std::string signingRegion;       ///< region in the credential scope
    std::string signingName = "s3";  ///< service in the credential scope
    std::string serviceId = "S3";    ///< what the user agent says after "api/"
};

/// An answer, read whole. A body shorter than announced never becomes one.
struct ExchangeReply {
    int status = 0;
    std::map<std::string, std::string> headers;  ///< lower-case names; the first of equal names wins
    std::string remoteAddress;
    std::string body;

    /// For the next attempt, if there is one; the judge sets them when an error document names them.
    std::string otherHost;    ///< a URL
    std::string otherRegion;  ///< heeded where the configuration's region is "aws-global"
};

using ExchangeError = Aws::Client::AWSError<Aws::Client::CoreErrors>;
using ExchangeOutcome = Aws::Utils::Outcome<ExchangeReply, ExchangeError>;

/// Judges an answer that arrived whole: nothing when it is a success, the error when not.
/// The transport fills in the error's code, address and headers, and asks it whether to retry.
/// An error that must stay bare (a success whose document does not parse) is the service's own, after send().
using AnswerJudge = std::function<std::unique_ptr<ExchangeError>(ExchangeReply&)>;

/// Signs, sends, retries. Thread-safe: all state is fixed at construction, save the connection pool and
/// the clock correction, which have their own guards.
class Exchange {
public:
    Exchange(const Aws::Client::ClientConfiguration& configuration,
             std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentials);
    ~Exchange();
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    /// Blocks until an answer was judged a success or the retry strategy gave up. What the credentials
    /// provider throws passes through. A body that can't be repositioned, read or described by a clean
    /// header is an error before anything is sent.
    ExchangeOutcome send(const ExchangeRequest& request, const AnswerJudge& judge) const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace standin::aws
