#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "auth/Payload.hpp"
#include "operations/Operations.hpp"
#include "operations/Routes.hpp"
#include "operations/S3Error.hpp"
#include "s3server/Options.hpp"
#include "store/Store.hpp"

namespace s3server {

/// One request between its head and its answer. Belongs to one thread.
class Exchange {
public:
    explicit Exchange(Request head) : request_(std::move(head)) {}

    const Request& request() const { return request_; }
    /// Empty for a request that is no operation of S3.
    std::string_view operation() const { return route_ ? route_->operation : std::string_view(); }
    std::uint64_t bodyBytes() const { return bodyBytes_; }

    /// Where the next bytes of the body go, never empty; valid until the next call.
    BytesBuilder::Space space();
    /// The first `count` bytes of the space arrived. A body that isn't wanted goes nowhere.
    void commit(std::size_t count);
    /// Whether it makes sense to read on: not if gigabytes come that are refused already.
    bool wantsMore() const;

private:
    friend class Service;

    void refuse(const S3Error& error);

    Request request_;
    const Route* route_ = nullptr;
    std::optional<PayloadReceiver> receiver_;
    std::optional<S3Error> refusal_;
    std::vector<char> discarded_;
    std::uint64_t bodyBytes_ = 0;
};

/// The S3 service without its transport: from the head of a request and its body to the reply. May be used
/// by any number of threads.
class Service {
public:
    explicit Service(Options options);

    /// Judges what can be judged before the body: operation and signature. A refusal becomes the answer.
    Exchange accept(Request head);
    /// To be called once, when the whole body has arrived.
    Reply answer(Exchange& exchange);
    /// The answer to a request that is refused for that error.
    Reply refuse(const Request& request, const S3Error& error);

    Store& store() { return store_; }
    TimePoint now() const { return options_.clock(); }

private:
    void authorize(Exchange& exchange, std::optional<ChunkSignatures>& signatures);
    Reply perform(Exchange& exchange);

    const Options options_;
    Store store_;
};

}  // namespace s3server
