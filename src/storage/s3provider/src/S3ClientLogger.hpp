#pragma once

#include <foundation/log/diagnostic_logger.hpp>

namespace storage::s3provider {

/// The process-wide logger of the cloud client, channel "storage::s3provider::S3Client". Made on first use,
/// destroyed at process exit. Any thread.
foundation::log::diagnostic_logger& s3ClientLogger();

}  // namespace storage::s3provider
