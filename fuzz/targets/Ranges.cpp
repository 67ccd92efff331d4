#include "http/Range.hpp"

#include <algorithm>
#include <string>

#include "DownloadAttempts.hpp"
#include "FuzzTarget.hpp"
#include "operations/S3Error.hpp"
#include "text/Text.hpp"

using namespace fuzz;
using s3server::Range;

namespace {

template <class Read>
std::optional<Range> unlessRefused(Read read) {
    try {
        return read();
    } catch (const s3server::S3Error&) {
        return std::nullopt;
    }
}

bool isInside(const Range& range, std::uint64_t size) {
    return range.length > 0 && range.first < size && range.length <= size - range.first;
}

}  // namespace

// The first line is the whole's size, the second the header.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [sizeText, header] = s3server::splitAtFirst(textOf(data, size), '\n');
    const std::uint64_t whole = s3server::parseNumber(sizeText).value_or(size);
    const auto requested = unlessRefused([&, h = header] { return s3server::requestedRange(h, whole); });
    const auto copied =
        unlessRefused([&, h = header] { return std::optional(s3server::copiedRange(h, whole)); });
    require(!requested || isInside(*requested, whole), "a range lies inside of its whole");
    require(!copied || isInside(*copied, whole), "a copied range lies inside of its whole");
    require(
        !copied || (requested && requested->first == copied->first && requested->length == copied->length),
        "a range that may be copied may be read");
    if (!requested) return 0;
    const auto last = requested->first + requested->length - 1;
    const auto again = s3server::copiedRange(storage::s3provider::byteRange(requested->first, last), whole);
    require(again.first == requested->first && again.length == requested->length, "a range comes back");
    return 0;
}
