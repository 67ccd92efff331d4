#pragma once

#include "foundation/storage/provider/Exception.hpp"

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace storage::cloudprovider {

/// A failed operation of a CloudClient. The message is for people; the context, where the error has one,
/// is its stable identifier.
class CloudException : public std::runtime_error {
public:
    using ExceptionContext = foundation::storage::provider::ExceptionContext;

    CloudException(const std::string& message, std::optional<ExceptionContext> context)
        : std::runtime_error(message), m_context(std::move(context)) {}

    const std::optional<ExceptionContext>& context() const { return m_context; }

private:
    std::optional<ExceptionContext> m_context;
};

/// The service doesn't know or accept the credentials.
class InvalidCredentialsException : public CloudException {
public:
    explicit InvalidCredentialsException(std::optional<ExceptionContext> context)
        : CloudException("Invalid Cloud credentials", std::move(context)) {}
};

/// The bucket doesn't exist, or lives in another region than the client was made for.
class InvalidLocationException : public CloudException {
public:
    explicit InvalidLocationException(std::optional<ExceptionContext> context)
        : CloudException("Invalid Cloud location", std::move(context)) {}
};

/// The service knows who is asking and refuses.
class PermissionDeniedException : public CloudException {
public:
    explicit PermissionDeniedException(std::optional<ExceptionContext> context)
        : CloudException("Permission for the Cloud resource has been denied", std::move(context)) {}
};

/// There is no such bucket, object or upload.
class ResourceNotFoundException : public CloudException {
public:
    explicit ResourceNotFoundException(std::optional<ExceptionContext> context)
        : CloudException("Cloud Resource not found", std::move(context)) {}
};

/// Nothing explains the failure.
class UnknownErrorException : public CloudException {
public:
    explicit UnknownErrorException(std::optional<ExceptionContext> context)
        : CloudException("Unknown error", std::move(context)) {}
};

}  // namespace storage::cloudprovider
