#include "operations/Service.hpp"

#include <algorithm>
#include <chrono>
#include <exception>

#include "auth/Authentication.hpp"
#include "text/Encoding.hpp"
#include "text/Random.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

constexpr std::uint64_t largestDocument = std::uint64_t{2} << 20U;
constexpr std::uint64_t largestObject = std::uint64_t{5} << 30U;
constexpr std::uint64_t mostDiscarded = std::uint64_t{64} << 20U;
constexpr std::size_t discardBufferSize = std::size_t{64} << 10U;

std::string newRequestId() {
    std::string id = hex(randomBytes(8));
    std::transform(id.begin(), id.end(), id.begin(),
                   [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    return id;
}

std::string newHostId() {
    return base64(randomBytes(48));
}

void requireLength(const Request& request) {
    if (!request.hasHeader("content-length") && !request.hasHeader("transfer-encoding"))
        throw S3Error("MissingContentLength");
}

/// Only what is to be stored takes room in the memory: documents are small, gone in a moment, and how one
/// makes room.
PayloadReceiver receiverFor(const Route& route, const Request& request,
                            std::optional<ChunkSignatures> signatures, Memory& memory) {
    if (route.body == BodyKind::Document) return {request, largestDocument, std::move(signatures)};
    requireLength(request);
    return {request, largestObject, std::move(signatures), &memory};
}

}  // namespace

BytesBuilder::Space Exchange::space() {
    try {
        if (receiver_) return receiver_->space();
    } catch (const S3Error& error) {
        refuse(error);
    }
    discarded_.resize(discardBufferSize);
    return {discarded_.data(), discarded_.size()};
}

void Exchange::commit(std::size_t count) {
    bodyBytes_ += count;
    if (!receiver_) return;
    try {
        receiver_->commit(count);
    } catch (const S3Error& error) {
        refuse(error);
    }
}

void Exchange::refuse(const S3Error& error) {
    refusal_ = error;
    receiver_.reset();
}

bool Exchange::wantsMore() const {
    return receiver_ || bodyBytes_ < mostDiscarded;
}

Service::Service(Options options) : options_(std::move(options)), store_(options_.memoryLimit) {}

Exchange Service::accept(Request head) {
    Exchange exchange(std::move(head));
    try {
        locate(exchange.request_, options_.hostNames);
        exchange.route_ = &findRoute(exchange.request_);
        std::optional<ChunkSignatures> signatures;
        if (options_.checkSignatures) authorize(exchange, signatures);
        exchange.receiver_.emplace(
            receiverFor(*exchange.route_, exchange.request_, std::move(signatures), store_.memory()));
    } catch (const S3Error& error) {
        exchange.refusal_ = error;
    }
    return exchange;
}

void Service::authorize(Exchange& exchange, std::optional<ChunkSignatures>& signatures) {
    const Request& request = exchange.request();
    Signer signer = authenticate(request, options_.credentials, now());
    if (!exchange.route_->anyRegion) {
        const std::string expected = store_.bucket(request.bucket).region();
        if (signer.region != expected) throw wrongRegion(signer.region, expected);
    }
    signatures = std::move(signer.chunks);
}

Reply Service::answer(Exchange& exchange) {
    if (exchange.refusal_) return refuse(exchange.request(), *exchange.refusal_);
    try {
        return perform(exchange);
    } catch (const S3Error& error) {
        return refuse(exchange.request(), error);
    } catch (const std::exception&) {
        return refuse(exchange.request(), S3Error("InternalError"));
    }
}

Reply Service::perform(Exchange& exchange) {
    const Payload payload = exchange.receiver_->finish(exchange.request());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(now());
    Reply reply = exchange.route_->perform({exchange.request(), payload, store_, seconds});
    reply.headers.insert(reply.headers.begin(),
                         {{"x-amz-id-2", newHostId()}, {"x-amz-request-id", newRequestId()}});
    return reply;
}

Reply Service::refuse(const Request& request, const S3Error& error) {
    const std::string requestId = newRequestId();
    const std::string hostId = newHostId();
    Reply reply;
    reply.status = error.status();
    reply.headers = {
        {"x-amz-id-2", hostId}, {"x-amz-request-id", requestId}, {"Content-Type", "application/xml"}};
    reply.headers.insert(reply.headers.end(), error.headers().begin(), error.headers().end());
    if (request.method != "HEAD") reply.body = Bytes(errorDocument(error, requestId, hostId));
    return reply;
}

}  // namespace s3server
