#include "cloudprovider/CloudReader.hpp"

#include "cloudprovider/WindowBuffer.hpp"
#include "storage/cloudprovider/CloudException.hpp"

#include <algorithm>
#include <ostream>
#include <utility>

namespace storage::cloudprovider {

namespace {

constexpr std::size_t pieceSize = std::size_t(8) << 20U;

struct Range {
    std::uint64_t first;
    std::uint64_t last;
};

/// The bytes to ask for, both included. A client takes equal ends for the whole object, so a single byte is
/// asked for together with a neighbour; an object of one byte has none and may be asked for whole.
Range requestRange(std::uint64_t offset, std::size_t count, std::uint64_t objectSize) {
    if (count > 1 || objectSize == 1) return {offset, offset + count - 1};
    return offset > 0 ? Range{offset - 1, offset} : Range{0, 1};
}

}  // namespace

CloudReader::CloudReader(std::shared_ptr<CloudClient> client, std::string key, std::uint64_t size)
    : client_(std::move(client)), key_(std::move(key)), size_(size) {}

std::size_t CloudReader::read(std::uint64_t offset, char* buffer, std::size_t count) {
    if (offset >= size_) return 0;
    const auto total = static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset));
    for (std::size_t done = 0; done < total; done += std::min(pieceSize, total - done))
        readPiece(offset + done, buffer + done, std::min(pieceSize, total - done));
    return total;
}

void CloudReader::readPiece(std::uint64_t offset, char* buffer, std::size_t count) {
    const Range range = requestRange(offset, count, size_);
    WindowBuffer window(buffer, offset - range.first, count);
    std::ostream out(&window);
    client_->download(key_, out, range.first, range.last);
    if (window.written() != range.last - range.first + 1)
        throw UnknownErrorException(CloudException::ExceptionContext(u"unexpected_length"));
}

}  // namespace storage::cloudprovider
