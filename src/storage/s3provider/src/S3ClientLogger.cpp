#include "S3ClientLogger.hpp"

namespace storage::s3provider {

foundation::log::diagnostic_logger& s3ClientLogger() {
    static foundation::log::diagnostic_logger logger("storage::s3provider::S3Client");
    return logger;
}

}  // namespace storage::s3provider
