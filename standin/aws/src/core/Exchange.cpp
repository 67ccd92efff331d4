#include "core/Exchange.hpp"

#include <thread>
#include <utility>

#include "core/Call.hpp"
#include "core/UnsendableRequest.hpp"

namespace standin::aws {

struct Exchange::State {
    mutable ClientState client;
};

Exchange::Exchange(const Aws::Client::ClientConfiguration& configuration,
                   std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentials)
    : state_(new State{{configuration, std::move(credentials)}}) {}

Exchange::~Exchange() = default;

ExchangeOutcome Exchange::send(const ExchangeRequest& request, const AnswerJudge& judge) const {
    const auto sleep = [](std::chrono::milliseconds time) { std::this_thread::sleep_for(time); };
    try {
        Call call(state_->client, request, judge);
        return retry(*state_->client.configuration.retryStrategy, sleep,
                     [&call](long retries) { return call.attempt(retries); });
    } catch (const UnsendableRequest& fault) {
        return ExchangeError(Aws::Client::CoreErrors::VALIDATION, "", fault.what(), false);
    }
}

}  // namespace standin::aws
