#pragma once

#include <cstdint>

namespace storage::s3provider {

/// Retry settings of a download. Not to be confused with the SDK's own Aws::S3::S3ClientConfiguration.
struct S3ClientConfiguration {
    std::int64_t attempts;     ///< number of attempts; used as an unsigned count, so -1 means 2^64 - 1
    std::int64_t retryTimeMs;  ///< pause after each failed attempt in milliseconds; 0 or less: none
};

}  // namespace storage::s3provider
