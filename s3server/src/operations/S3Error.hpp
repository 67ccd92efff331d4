#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "s3server/Headers.hpp"

namespace s3server {

/// A refusal in the terms of the S3 API ("Error responses"). Thrown by whatever finds the request wanting,
/// caught in Service.
class S3Error : public std::exception {
public:
    /// Status and message are those of the code's row in the table of errors, the status 400 for a code
    /// without one.
    explicit S3Error(std::string_view code);

    /// The same with another message than the table's.
    S3Error&& saying(std::string message) &&;
    /// An element of the error document besides Code and Message, such as Key.
    S3Error&& with(std::string element, std::string text) &&;
    /// A header of the answer.
    S3Error&& withHeader(std::string name, std::string value) &&;
    S3Error&& withStatus(int status) &&;

    const char* what() const noexcept override { return code_.c_str(); }
    const std::string& code() const { return code_; }
    int status() const { return status_; }
    const std::string& message() const { return message_; }
    const Headers& elements() const { return elements_; }
    const Headers& headers() const { return headers_; }

private:
    std::string code_;
    std::string message_;
    int status_ = 400;
    Headers elements_;
    Headers headers_;
};

/// The error document of an answer.
std::string errorDocument(const S3Error& error, const std::string& requestId, const std::string& hostId);
/// The code that S3 uses most with that status; "InternalError" if it uses none.
std::string_view usualCode(int status);

}  // namespace s3server
