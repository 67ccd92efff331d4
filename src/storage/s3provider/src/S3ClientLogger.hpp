#pragma once

#include <foundation/log/diagnostic_logger.hpp>

namespace storage::s3provider {

/// The logger of the cloud client, channel "storage::s3provider::S3Client". Made on first use, it lives until
/// the library is unloaded. Any thread.
foundation::log::diagnostic_logger& s3ClientLogger();

}  // namespace storage::s3provider
