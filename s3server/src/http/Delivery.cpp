#include "http/Delivery.hpp"

#include <variant>

namespace s3server {
namespace {

/// One overload for each kind of fault.
struct Befall {
    Service& service;
    FaultPlan& faults;
    Exchange& exchange;
    std::size_t releases;

    Delivery operator()(const fault::Status& what) const {
        const S3Error error(what.code.empty() ? usualCode(what.status) : what.code);
        return {service.refuse(exchange.request(), S3Error(error).withStatus(what.status))};
    }
    Delivery operator()(const fault::ErrorIn200& what) const {
        return {service.refuse(exchange.request(), S3Error(what.code).withStatus(200))};
    }
    Delivery operator()(const fault::Reply& what) const {
        return {Reply{what.status, what.headers, Bytes(what.body)}};
    }
    Delivery operator()(const fault::CutAfter& what) const {
        return {service.answer(exchange), what.bytes, Ending::Close};
    }
    Delivery operator()(const fault::ResetAfterHeaders&) const {
        return {service.answer(exchange), 0, Ending::Reset};
    }
    Delivery operator()(const fault::Reset&) const { return {std::nullopt, 0, Ending::Reset}; }
    Delivery operator()(const fault::CloseWithoutReply&) const {
        service.answer(exchange);
        return {std::nullopt, 0, Ending::Close};
    }
    Delivery operator()(const fault::Delay& what) const { return answerIf(faults.wait(what.time)); }
    Delivery operator()(const fault::Stall&) const { return answerIf(faults.waitForRelease(releases)); }
    /// A request that was held while the server stopped isn't performed any more.
    Delivery answerIf(bool wanted) const {
        if (!wanted) return {std::nullopt, 0, Ending::Close};
        return {service.answer(exchange)};
    }
};

}  // namespace

Delivery deliver(Service& service, FaultPlan& faults, Exchange& exchange) {
    const auto taken = faults.take(exchange.operation(), exchange.request());
    if (!taken) return {service.answer(exchange)};
    return std::visit(Befall{service, faults, exchange, taken->releases}, taken->action);
}

}  // namespace s3server
