#include "s3/Service.hpp"

#include "s3/Url.hpp"

namespace standin::aws::s3 {

namespace {

using Aws::Client::CoreErrors;

std::unique_ptr<const XmlDocument> documentIn(const ExchangeReply& reply) {
    return reply.body.empty() ? nullptr : std::make_unique<const XmlDocument>(reply.body);
}

bool reportsFailure(const XmlDocument& document) {
    return document.root() != nullptr && document.root()->Name() == std::string_view("Error");
}

// An error document may name the host and the region where the request belongs.
void noteDirections(ExchangeReply& reply, const XmlDocument& document) {
    const auto* error = findError(document);
    const std::string host = childText(error, "Endpoint");
    reply.otherHost = hasHttpScheme(host) ? host : "http://" + host;
    reply.otherRegion = trimmedChildText(error, "Region");
}

std::unique_ptr<CoreError> errorIn(ExchangeReply& reply, const XmlDocument* document) {
    if (document == nullptr) return std::make_unique<CoreError>(errorWithoutBody(reply.status));
    noteDirections(reply, *document);
    return std::make_unique<CoreError>(errorFrom(reply.status, *document));
}

CoreError describedBy(const ExchangeReply& reply, const Headers& headers, CoreError error) {
    error.SetResponseCode(static_cast<Aws::Http::HttpResponseCode>(reply.status));
    error.SetResponseHeaders(headers);
    error.SetRemoteHostIpAddress(reply.remoteAddress);
    return error;
}

std::string signingRegion(const Aws::Endpoint::AWSEndpoint& endpoint) {
    const auto& attributes = endpoint.GetAttributes();
    return attributes ? attributes->authScheme.GetSigningRegion().value_or("") : "";
}

/// Decoded. The service's own endpoint has none, but a request does.
std::string pathOf(const Url& url) {
    return url.path.empty() ? "/" : percentDecoded(url.path);
}

/// The same for an object.
std::string pathTo(const std::string& key, Aws::Endpoint::AWSEndpoint endpoint) {
    endpoint.AddPathSegments(key);
    const std::string& url = endpoint.GetURL();
    return percentDecoded(std::string_view(url).substr(url.find('/', url.find("//") + 2)));
}

/// Without it the object would seem to be empty.
std::unique_ptr<CoreError> missingLength(const ExchangeReply& reply) {
    if (reply.headers.count("content-length") > 0) return nullptr;
    return std::make_unique<CoreError>(CoreErrors::UNKNOWN, "",
                                       "The response doesn't tell the object's length", false);
}

/// A dot at its end keeps a resolver from looking for the name in the machine's own domain.
std::string_view withoutDotAtEnd(std::string_view host) {
    return !host.empty() && host.back() == '.' ? host.substr(0, host.size() - 1) : host;
}

bool isPort(const std::optional<unsigned>& port) {
    return !port || *port != 0;
}

}  // namespace

Service::Service(std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentials,
                 std::shared_ptr<Aws::S3::Endpoint::S3EndpointProviderBase> endpoints,
                 const Aws::S3::S3ClientConfiguration& configuration)
    : endpoints_(endpoints ? std::move(endpoints)
                           : std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>()),
      exchange_(configuration, std::move(credentials)),
      signsPayload_(configuration.payloadSigningPolicy !=
                    Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never) {
    endpoints_->InitBuiltInParameters(configuration);
}

std::variant<Answer, CoreError> Service::ask(const OperationCall& call) const {
    if (!call.missingField.empty()) return missingField(call.missingField);
    const auto endpoint = endpoints_->ResolveEndpoint({{"Bucket", call.bucket}});
    if (!endpoint.IsSuccess()) return endpoint.GetError();
    auto request = makeRequest(call, endpoint.GetResult());
    if (auto* error = std::get_if<CoreError>(&request)) return std::move(*error);
    auto& exchangeRequest = std::get<ExchangeRequest>(request);
    exchangeRequest.signPayload = signsPayload_;

    Answer answer;
    auto reply = exchange_.send(
        exchangeRequest, [&](ExchangeReply& each) { return judge(call.answerBody, each, answer.document); });
    if (!reply.IsSuccess()) return reply.GetError();
    if (answer.document && !answer.document->parsed()) return xmlParseError(answer.document->errorName());
    answer.headers = std::move(reply.GetResult().headers);
    answer.body = std::move(reply.GetResult().body);
    const auto fault = call.faultOf != nullptr ? call.faultOf(answer) : std::string_view();
    if (!fault.empty()) return describedBy(reply.GetResult(), answer.headers, unexpectedResponse(fault));
    return answer;
}

std::variant<ExchangeRequest, CoreError> makeRequest(const OperationCall& call,
                                                     const Aws::Endpoint::AWSEndpoint& endpoint) {
    const auto url = splitUrl(endpoint.GetURL());
    if (!url || !isHostName(withoutDotAtEnd(url->host)) || !isPort(url->port)) {
        return CoreError(CoreErrors::VALIDATION, "", "Invalid DNS Label found in URI host", false);
    }
    ExchangeRequest request;
    request.method = call.method;
    request.scheme = url->scheme;
    request.authority = authorityOf(*url);
    request.path = call.key.empty() ? pathOf(*url) : pathTo(call.key, endpoint);
    request.subresource = call.subresource;
    request.query = call.query;
    request.headers = call.headers;
    request.body = call.body;
    request.sendMd5 = call.sendMd5;
    request.answersContent = call.answerBody == AnswerBody::Content;
    request.signingRegion = signingRegion(endpoint);
    return request;
}

std::unique_ptr<CoreError> judge(AnswerBody kind, ExchangeReply& reply,
                                 std::unique_ptr<const XmlDocument>& document) {
    document.reset();
    const bool succeeded = reply.status >= 200 && reply.status < 300;
    if (succeeded && kind == AnswerBody::Content) return nullptr;
    if (succeeded && kind == AnswerBody::Length) return missingLength(reply);
    document = documentIn(reply);
    const bool failed = !succeeded || (document && reportsFailure(*document));
    return failed ? errorIn(reply, document.get()) : nullptr;
}

}  // namespace standin::aws::s3
