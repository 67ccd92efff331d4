#pragma once

#include "foundation/storage/provider/StorageIRI.hpp"

#include <exception>
#include <list>
#include <string>
#include <utility>

namespace foundation::storage::provider {

/// What went wrong, for callers to decide on.
enum class ErrorCode {
    InvalidIRI = 1,  ///< the IRI doesn't name what is needed of it
};

/// The identifier of an error, such as u"no_such_key": the stable part of an error, on which callers may
/// decide.
class ExceptionContext {
public:
    explicit ExceptionContext(std::u16string text) : text_(std::move(text)) {}

    const std::u16string& text() const { return text_; }

    friend bool operator==(const ExceptionContext& a, const ExceptionContext& b) {
        return a.text_ == b.text_;
    }
    friend bool operator!=(const ExceptionContext& a, const ExceptionContext& b) { return !(a == b); }

private:
    std::u16string text_;
};

/// A failure of the storage framework with an IRI. The message is fixed for each code and doesn't quote the
/// IRI, which may hold a password.
class Exception : public std::exception {
public:
    Exception(const ErrorCode& code, const StorageIRI& iri) : code_(code), iri_(iri) {}

    const char* what() const noexcept override { return "The IRI can't be used"; }

    ErrorCode errorCode() const noexcept { return code_; }
    const StorageIRI& iri() const noexcept { return iri_; }

    /// Attaches a context in front of those that are there. Returns this exception.
    Exception& addContext(ExceptionContext context) {
        contexts_.push_front(std::move(context));
        return *this;
    }

    /// The newest first.
    const std::list<ExceptionContext>& contexts() const noexcept { return contexts_; }

private:
    ErrorCode code_;
    StorageIRI iri_;
    std::list<ExceptionContext> contexts_;
};

}  // namespace foundation::storage::provider
