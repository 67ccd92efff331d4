#include <fl/i18n.hpp>

#include "AwsS3ClientFactory.hpp"
#include "AwsS3ClientFactoryLogger.hpp"
#include "ConfigurationSources.hpp"
#include "DiagnosticRecord.hpp"
#include "NumberParsing.hpp"

namespace storage::s3provider {

namespace {

std::int64_t numberFrom(const RetrySetting& setting) {
    try {
        const std::u16string value = fl::i18n::getenv(setting.variable);
        return value.empty() ? setting.defaultValue : parseInt(fl::i18n::ustring_to_utf8(value));
    } catch (...) {
        logRecord(awsS3ClientFactoryLogger(), LogConfigurationFailures, "Caught exception while parsing ",
                  setting.variable);
        return setting.defaultValue;
    }
}

}  // namespace

std::int64_t getDataAttempts() {
    return numberFrom(attemptsSetting);
}

std::int64_t getRetryTimeMs() {
    return numberFrom(retryTimeSetting);
}

S3ClientConfiguration getRetrySettings() {
    const std::int64_t attempts = getDataAttempts();
    return {attempts, getRetryTimeMs()};
}

}  // namespace storage::s3provider
