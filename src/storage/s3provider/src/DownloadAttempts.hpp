#pragma once

#include <aws/s3/S3ServiceClientModel.h>
#include <aws/s3/model/GetObjectResult.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "S3ClientConfiguration.hpp"

namespace storage::s3provider {

/// The bytes from `first` to `last`, both included, as an HTTP Range value: "bytes=100-199".
inline std::string byteRange(std::uint64_t first, std::uint64_t last) {
    return "bytes=" + std::to_string(first) + "-" + std::to_string(last);
}

/// Sends one GetObject for bytes `start` to `end`, both included; for the whole object when start >= end.
using ByteSource = std::function<Aws::S3::Model::GetObjectOutcome(std::uint64_t start, std::uint64_t end)>;

/// Blocks the calling thread for a time. Called only with times above 0.
using Sleeper = std::function<void(std::chrono::milliseconds)>;

/// Asks `source` until it succeeds or the attempts are used up, and returns the last outcome; without
/// attempts that of an empty error. `sleep` is called after every failed attempt, the last one included: a
/// host that repeats the download itself then still leaves the service its pause.
Aws::S3::Model::GetObjectOutcome attemptDownload(const S3ClientConfiguration& settings, std::uint64_t start,
                                                 std::uint64_t end, const ByteSource& source,
                                                 const Sleeper& sleep);

}  // namespace storage::s3provider
