#include "FailureText.hpp"

#include <fl/i18n.hpp>

#include "Text.hpp"

namespace s3vfs {

using foundation::storage::provider::ErrorCode;
using foundation::storage::provider::ExceptionContext;

namespace {

std::string nameOf(ErrorCode code) {
    return code == ErrorCode::InvalidIRI ? "InvalidIRI" : "error " + std::to_string(static_cast<int>(code));
}

std::string textOf(const ExceptionContext& context) {
    return printable(fl::i18n::to_string(context.text()));
}

}  // namespace

std::string describe(const storage::cloudprovider::CloudException& failure) {
    if (!failure.context()) return failure.what();
    return std::string(failure.what()) + " (" + textOf(*failure.context()) + ")";
}

std::string describe(const foundation::storage::provider::Exception& failure) {
    std::string text = std::string(failure.what()) + " (" + nameOf(failure.errorCode()) +
                       "): " + printable(fl::i18n::to_string(failure.iri().toString()));
    for (const ExceptionContext& context : failure.contexts())
        text += ", " + textOf(context);
    return text;
}

}  // namespace s3vfs
