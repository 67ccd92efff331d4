#pragma once

#include <aws/core/http/HttpResponse.h>
#include <aws/core/http/HttpTypes.h>
#include <aws/core/utils/memory/stl/AWSStreamFwd.h>
#include <aws/core/utils/memory/stl/AWSString.h>

#include <ostream>
#include <utility>

namespace Aws::Client {

enum class RetryableType { NOT_RETRYABLE, RETRYABLE, RETRYABLE_THROTTLING };

/// What went wrong with a request. `ErrorType` is the enumeration of a service's errors, whose first
/// numbers are those of CoreErrors; errors of different services convert by number.
template <typename ErrorType>
class AWSError {
public:
    AWSError() = default;

    AWSError(ErrorType type, Aws::String exceptionName, Aws::String message, RetryableType retryable)
        : type_(type),
          exceptionName_(std::move(exceptionName)),
          message_(std::move(message)),
          retryable_(retryable) {}

    AWSError(ErrorType type, Aws::String exceptionName, Aws::String message, bool isRetryable)
        : AWSError(type, std::move(exceptionName), std::move(message), toRetryableType(isRetryable)) {}

    AWSError(ErrorType type, RetryableType retryable) : type_(type), retryable_(retryable) {}

    AWSError(ErrorType type, bool isRetryable) : AWSError(type, toRetryableType(isRetryable)) {}

    template <typename OtherType>
    AWSError(const AWSError<OtherType>& other)  // NOLINT(google-explicit-constructor)
        : type_(static_cast<ErrorType>(other.type_)),
          exceptionName_(other.exceptionName_),
          message_(other.message_),
          remoteHostIpAddress_(other.remoteHostIpAddress_),
          requestId_(other.requestId_),
          responseHeaders_(other.responseHeaders_),
          responseCode_(other.responseCode_),
          retryable_(other.retryable_) {}

    template <typename OtherType>
    AWSError(AWSError<OtherType>&& other)  // NOLINT(google-explicit-constructor)
        : type_(static_cast<ErrorType>(other.type_)),
          exceptionName_(std::move(other.exceptionName_)),
          message_(std::move(other.message_)),
          remoteHostIpAddress_(std::move(other.remoteHostIpAddress_)),
          requestId_(std::move(other.requestId_)),
          responseHeaders_(std::move(other.responseHeaders_)),
          responseCode_(other.responseCode_),
          retryable_(other.retryable_) {}

    ErrorType GetErrorType() const { return type_; }

    /// The name the service gave the error, such as "NoSuchKey"; empty when it gave none.
    const Aws::String& GetExceptionName() const { return exceptionName_; }
    void SetExceptionName(const Aws::String& name) { exceptionName_ = name; }

    const Aws::String& GetMessage() const { return message_; }
    void SetMessage(const Aws::String& message) { message_ = message; }

    /// Address of the peer the connection was made to, a proxy's included; empty without connection.
    const Aws::String& GetRemoteHostIpAddress() const { return remoteHostIpAddress_; }
    void SetRemoteHostIpAddress(const Aws::String& address) { remoteHostIpAddress_ = address; }

    const Aws::String& GetRequestId() const { return requestId_; }
    void SetRequestId(const Aws::String& requestId) { requestId_ = requestId; }

    /// Lower-case names.
    const Aws::Http::HeaderValueCollection& GetResponseHeaders() const { return responseHeaders_; }
    void SetResponseHeaders(const Aws::Http::HeaderValueCollection& headers) { responseHeaders_ = headers; }
    bool ResponseHeaderExists(const Aws::String& lowerCaseName) const {
        return responseHeaders_.find(lowerCaseName) != responseHeaders_.end();
    }

    Aws::Http::HttpResponseCode GetResponseCode() const { return responseCode_; }
    void SetResponseCode(Aws::Http::HttpResponseCode code) { responseCode_ = code; }

    bool ShouldRetry() const { return retryable_ != RetryableType::NOT_RETRYABLE; }
    bool ShouldThrottle() const { return retryable_ == RetryableType::RETRYABLE_THROTTLING; }
    void SetRetryableType(RetryableType retryable) { retryable_ = retryable; }

private:
    template <typename>
    friend class AWSError;

    static RetryableType toRetryableType(bool isRetryable) {
        return isRetryable ? RetryableType::RETRYABLE : RetryableType::NOT_RETRYABLE;
    }

    ErrorType type_{};
    Aws::String exceptionName_;
    Aws::String message_;
    Aws::String remoteHostIpAddress_;
    Aws::String requestId_;
    Aws::Http::HeaderValueCollection responseHeaders_;
    Aws::Http::HttpResponseCode responseCode_ = Aws::Http::HttpResponseCode::REQUEST_NOT_MADE;
    RetryableType retryable_ = RetryableType::NOT_RETRYABLE;
};

/// Several lines, the last without line end; the headers sorted by name.
template <typename ErrorType>
Aws::OStream& operator<<(Aws::OStream& out, const AWSError<ErrorType>& error) {
    out << "HTTP response code: " << static_cast<int>(error.GetResponseCode()) << '\n'
        << "Resolved remote host IP address: " << error.GetRemoteHostIpAddress() << '\n'
        << "Request ID: " << error.GetRequestId() << '\n'
        << "Exception name: " << error.GetExceptionName() << '\n'
        << "Error message: " << error.GetMessage() << '\n'
        << error.GetResponseHeaders().size() << " response headers:";
    for (const auto& [name, value] : error.GetResponseHeaders()) {
        out << '\n' << name << " : " << value;
    }
    return out;
}

}  // namespace Aws::Client
