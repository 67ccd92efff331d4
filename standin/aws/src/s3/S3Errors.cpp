#include <aws/s3/S3Errors.h>

#include <algorithm>
#include <string_view>

namespace Aws::S3::S3ErrorMapper {

namespace {

using Aws::Client::CoreErrors;

// None of them is retried.
struct NamedError {
    std::string_view name;
    S3Errors type;
};
constexpr NamedError namedErrors[] = {
    {"BucketAlreadyExists", S3Errors::BUCKET_ALREADY_EXISTS},
    {"BucketAlreadyOwnedByYou", S3Errors::BUCKET_ALREADY_OWNED_BY_YOU},
    {"InvalidObjectState", S3Errors::INVALID_OBJECT_STATE},
    {"NoSuchBucket", S3Errors::NO_SUCH_BUCKET},
    {"NoSuchKey", S3Errors::NO_SUCH_KEY},
    {"NoSuchUpload", S3Errors::NO_SUCH_UPLOAD},
    {"ObjectAlreadyInActiveTierError", S3Errors::OBJECT_ALREADY_IN_ACTIVE_TIER},
    {"ObjectNotInActiveTierError", S3Errors::OBJECT_NOT_IN_ACTIVE_TIER},
};

}  // namespace

Aws::Client::AWSError<CoreErrors> GetErrorForName(const char* errorName) {
    const auto* const found = std::find_if(std::begin(namedErrors), std::end(namedErrors),
                                           [&](const NamedError& named) { return named.name == errorName; });
    if (found == std::end(namedErrors)) return Aws::Client::CoreErrorsMapper::GetErrorForName(errorName);
    return {static_cast<CoreErrors>(found->type), false};
}

}  // namespace Aws::S3::S3ErrorMapper
