#include <fl/i18n.hpp>

#include "AwsS3ClientFactory.hpp"
#include "AwsS3ClientFactoryLogger.hpp"
#include "DiagnosticRecord.hpp"
#include "NumberParsing.hpp"

namespace storage::s3provider {

namespace {

std::int64_t numberFromEnvironment(const char* variable, std::int64_t defaultValue) {
    try {
        const std::u16string value = fl::i18n::getenv(variable);
        return value.empty() ? defaultValue : parseInt(fl::i18n::ustring_to_utf8(value));
    } catch (...) {
        logRecord(awsS3ClientFactoryLogger(), LogConfigurationFailures, "Caught exception while parsing ",
                  variable);
        return defaultValue;
    }
}

}  // namespace

std::int64_t getDataAttempts() {
    return numberFromEnvironment("ZR_AWS_GETDATA_ATTEMPTS", 5);
}

std::int64_t getRetryTimeMs() {
    return numberFromEnvironment("ZR_AWS_RETRYTIMEMS", 1000);
}

S3ClientConfiguration getRetrySettings() {
    const std::int64_t attempts = getDataAttempts();
    return {attempts, getRetryTimeMs()};
}

}  // namespace storage::s3provider
