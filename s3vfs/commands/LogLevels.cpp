#include "commands/LogLevels.hpp"

#include <charconv>
#include <foundation/log/diagnostic_logger.hpp>
#include <foundation/log/stream_sink.hpp>

#include "messages/Text.hpp"
#include "messages/UsageError.hpp"

namespace s3vfs {

using foundation::log::allLevels;

unsigned parseLogLevels(const std::string& text) {
    if (text == "all") return allLevels;
    unsigned mask = 0;
    const char* position = text.data();
    const char* const end = position + text.size();
    while (true) {
        unsigned level = 0;
        const auto [next, error] = std::from_chars(position, end, level);
        if (error != std::errc() || level > allLevels || (next != end && *next != ',')) {
            throw UsageError("'" + printable(text) +
                             "' are no log levels: write --log-levels all, or numbers like 2,32,64,512");
        }
        mask |= level;
        if (next == end) return mask;
        position = next + 1;
    }
}

void enableLogLevels(unsigned levels) {
    for (const char* const channel :
         {"storage::s3provider::S3Client", "storage::s3provider::AwsS3ClientFactory"})
        foundation::log::setEnabledLevels(channel, levels);
}

}  // namespace s3vfs
