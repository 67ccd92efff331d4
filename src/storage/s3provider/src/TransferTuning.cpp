#include "TransferTuning.hpp"

#include <boost/exception/diagnostic_information.hpp>

#include "DiagnosticRecord.hpp"
#include "NumberParsing.hpp"
#include "S3CloudClient.hpp"

namespace storage::s3provider {

namespace {

void reportSwallowed(const NumberSetting&) {
    logRecord(s3ClientLogger(), LogSwallowedExceptions,
              "Exception caught: ", [] { return boost::current_exception_diagnostic_information(true); });
}

}  // namespace

std::int64_t transferBufferSize() {
    return readNumber({"ZR_AWS_TRANSFER_BUFFER_SIZE", 5242880}, reportSwallowed);
}

std::int64_t transferMaxHeapSize() {
    return readNumber({"ZR_AWS_TRANSFER_MAX_HEAP_SIZE", 52428800}, reportSwallowed);
}

std::int64_t transferMaxNumThreads() {
    return readNumber({"ZR_AWS_TRANSFER_MAX_NUM_THREADS", 10}, reportSwallowed);
}

}  // namespace storage::s3provider
