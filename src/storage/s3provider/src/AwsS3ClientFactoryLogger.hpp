#pragma once

#include <foundation/log/diagnostic_logger.hpp>

namespace storage::s3provider {

/// The logger of everything that makes S3 clients, channel "storage::s3provider::AwsS3ClientFactory". It
/// lives from the loading of the library to its unloading. Any thread.
foundation::log::diagnostic_logger& awsS3ClientFactoryLogger();

}  // namespace storage::s3provider
