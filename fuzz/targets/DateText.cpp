#include <aws/core/utils/DateTime.h>

#include <string>

#include "FuzzTarget.hpp"
#include "text/Dates.hpp"

using namespace fuzz;
using Aws::Utils::DateFormat;
using Aws::Utils::DateTime;

namespace {

constexpr DateFormat writtenFormats[] = {DateFormat::RFC822, DateFormat::ISO_8601,
                                         DateFormat::ISO_8601_BASIC};

bool isWholeSecond(const DateTime& time) {
    return time.UnderlyingTimestamp().time_since_epoch() % std::chrono::seconds(1) == std::chrono::seconds(0);
}

/// A year beyond the clock's wraps around to some instant between two seconds, which no format writes.
void checkAsWritten(const DateTime& time) {
    if (!isWholeSecond(time)) return;
    for (const DateFormat format : writtenFormats) {
        const DateTime again(time.ToGmtString(format), format);
        require(again.WasParseSuccessful() && again == time, "a date written is read again");
        require(DateTime(time.ToGmtString(format), DateFormat::AutoDetect) == time,
                "its format is found out");
    }
}

void checkRead(const std::string& text) {
    const DateTime detected(text, DateFormat::AutoDetect);
    bool anyRead = false;
    for (const DateFormat format : writtenFormats) {
        const DateTime time(text, format);
        require(time.WasParseSuccessful() || time == DateTime(), "what doesn't read is the epoch");
        anyRead = anyRead || time.WasParseSuccessful();
        checkAsWritten(time);
    }
    require(detected.WasParseSuccessful() == anyRead, "every format is tried");
}

using ServerReader = std::optional<s3server::TimePoint> (*)(std::string_view);

/// The server's readers are stricter, and code of their own.
void checkAgainst(ServerReader read, const std::string& text, DateFormat format) {
    const auto strict = read(text);
    const DateTime lenient(text, format);
    if (!strict || !lenient.WasParseSuccessful() || !isWholeSecond(lenient)) return;
    require(lenient == DateTime(*strict), "two readers agree");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(textOf(data, size));
    checkRead(text);
    checkAgainst(s3server::parseHttpDate, text, DateFormat::RFC822);
    checkAgainst(s3server::parseSigningDate, text, DateFormat::ISO_8601_BASIC);
    return 0;
}
