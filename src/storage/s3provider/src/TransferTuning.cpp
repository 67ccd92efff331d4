#include "TransferTuning.hpp"

#include <boost/exception/diagnostic_information.hpp>
#include <fl/i18n.hpp>

#include "DiagnosticRecord.hpp"
#include "NumberParsing.hpp"
#include "S3CloudClient.hpp"

namespace storage::s3provider {

namespace {

std::int64_t numberFromEnvironment(const char* variable, std::int64_t defaultValue) {
    try {
        const std::u16string value = fl::i18n::getenv(variable);
        return value.empty() ? defaultValue : parseInt(fl::i18n::ustring_to_utf8(value));
    } catch (...) {
        logRecord(s3ClientLogger(), LogSwallowedExceptions,
                  "Exception caught: ", [] { return boost::current_exception_diagnostic_information(true); });
        return defaultValue;
    }
}

}  // namespace

std::int64_t transferBufferSize() {
    return numberFromEnvironment("ZR_AWS_TRANSFER_BUFFER_SIZE", 5242880);
}

std::int64_t transferMaxHeapSize() {
    return numberFromEnvironment("ZR_AWS_TRANSFER_MAX_HEAP_SIZE", 52428800);
}

std::int64_t transferMaxNumThreads() {
    return numberFromEnvironment("ZR_AWS_TRANSFER_MAX_NUM_THREADS", 10);
}

}  // namespace storage::s3provider
