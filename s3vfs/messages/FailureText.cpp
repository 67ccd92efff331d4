#include "messages/FailureText.hpp"

#include <utf8.h>

#include <cstdlib>
#include <string_view>

#include "messages/Text.hpp"

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

/// What names the credentials file, the first that is set.
constexpr const char* namesOfCredentialsFile[] = {"AWS_SHARED_CREDENTIALS_FILE", "HOME"};

/// The variable that names the credentials file, if its value isn't UTF-8; else null.
const char* illFormedVariable() {
    for (const char* const name : namesOfCredentialsFile) {
        const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nobody sets any now
        if (value == nullptr || *value == '\0') continue;
        const std::string_view text = value;
        return utf8::is_valid(text.begin(), text.end()) ? nullptr : name;
    }
    return nullptr;
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

std::string describe(const fl::i18n::conversion_error& failure) {
    const char* const variable = illFormedVariable();
    const auto what = variable == nullptr ? "a path or a variable" : std::string("the value of ") + variable;
    return what + " isn't UTF-8: " + failure.what();
}

}  // namespace s3vfs
