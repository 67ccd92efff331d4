#pragma once

#include <aws/s3/S3EndpointProvider.h>
#include <aws/s3/S3Errors.h>

#include <memory>
#include <variant>

#include "core/Exchange.hpp"
#include "s3/Answer.hpp"
#include "s3/ErrorMarshalling.hpp"
#include "s3/OperationCall.hpp"

namespace standin::aws::s3 {

/// Sends operations to S3 and tells success from failure. Thread-safe.
class Service {
public:
    Service(std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentials,
            std::shared_ptr<Aws::S3::Endpoint::S3EndpointProviderBase> endpoints,
            const Aws::S3::S3ClientConfiguration& configuration);

    /// The outcome of an operation, its result made of the successful answer.
    template <typename Result>
    Aws::Utils::Outcome<Result, Aws::S3::S3Error> perform(const OperationCall& call,
                                                          Result (*resultFrom)(Answer&)) const {
        auto outcome = ask(call);
        if (auto* answer = std::get_if<Answer>(&outcome)) return resultFrom(*answer);
        return Aws::S3::S3Error(std::get<CoreError>(outcome));
    }

private:
    std::variant<Answer, CoreError> ask(const OperationCall& call) const;

    std::shared_ptr<Aws::S3::Endpoint::S3EndpointProviderBase> endpoints_;
    Exchange exchange_;
    bool signsPayload_;
};

/// The request of a call to that endpoint. An error when the endpoint's host is no host name.
std::variant<ExchangeRequest, CoreError> makeRequest(const OperationCall& call,
                                                     const Aws::Endpoint::AWSEndpoint& endpoint);

/// Nothing for a success. Of a success, save content, `document` is what the body holds.
std::unique_ptr<CoreError> judge(AnswerBody kind, ExchangeReply& reply,
                                 std::unique_ptr<const XmlDocument>& document);

}  // namespace standin::aws::s3
