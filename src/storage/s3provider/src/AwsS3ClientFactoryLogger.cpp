#include "AwsS3ClientFactoryLogger.hpp"

namespace storage::s3provider {

namespace {

foundation::log::diagnostic_logger logger("storage::s3provider::AwsS3ClientFactory");

}  // namespace

foundation::log::diagnostic_logger& awsS3ClientFactoryLogger() {
    return logger;
}

}  // namespace storage::s3provider
