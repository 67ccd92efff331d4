#include "auth/Payload.hpp"

#include <algorithm>
#include <array>

#include "operations/S3Error.hpp"
#include "store/Checksums.hpp"
#include "text/Digest.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

constexpr std::size_t framedBufferSize = std::size_t{64} << 10U;

enum class Framing { None, Chunks, SignedChunks };

struct Mode {
    std::string_view name;
    Framing framing;
};

// The values of x-amz-content-sha256 that are no hash.
constexpr std::array modes{
    Mode{"", Framing::None},
    Mode{"UNSIGNED-PAYLOAD", Framing::None},
    Mode{"STREAMING-UNSIGNED-PAYLOAD-TRAILER", Framing::Chunks},
    Mode{"STREAMING-AWS4-HMAC-SHA256-PAYLOAD", Framing::SignedChunks},
    Mode{"STREAMING-AWS4-HMAC-SHA256-PAYLOAD-TRAILER", Framing::SignedChunks},
};

const Mode* findMode(std::string_view name) {
    const auto* const found =
        std::find_if(modes.begin(), modes.end(), [name](const Mode& mode) { return mode.name == name; });
    return found == modes.end() ? nullptr : found;
}

bool isHash(std::string_view text) {
    return text.size() == 64 && text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

Framing framingOf(const Request& request) {
    const auto text = request.header("x-amz-content-sha256");
    if (const Mode* const mode = findMode(text)) return mode->framing;
    if (isHash(text)) return Framing::None;
    if (startsWith(text, "STREAMING-"))
        throw S3Error("NotImplemented").with("Header", "x-amz-content-sha256");
    throw S3Error("InvalidArgument")
        .saying(
            "x-amz-content-sha256 must be UNSIGNED-PAYLOAD, STREAMING-UNSIGNED-PAYLOAD-TRAILER, "
            "STREAMING-AWS4-HMAC-SHA256-PAYLOAD, STREAMING-AWS4-HMAC-SHA256-PAYLOAD-TRAILER, or a valid "
            "sha256 value.")
        .with("ArgumentName", "x-amz-content-sha256")
        .with("ArgumentValue", std::string(text));
}

std::optional<std::uint64_t> announcedSize(const Request& request, Framing framing) {
    if (framing == Framing::None) return parseNumber(request.header("content-length"));
    const auto size = parseNumber(request.header("x-amz-decoded-content-length"));
    if (!size) throw S3Error("MissingContentLength");
    return size;
}

void checkHash(const Request& request, const Bytes& bytes) {
    const auto expected = request.header("x-amz-content-sha256");
    if (!isHash(expected)) return;
    const std::string computed = hex(digestOf(Digest::sha256(), bytes));
    if (computed == lowered(expected)) return;
    throw S3Error("XAmzContentSHA256Mismatch")
        .with("ClientComputedContentSHA256", std::string(expected))
        .with("S3ComputedContentSHA256", computed);
}

void checkTrailers(const Request& request, const Headers& trailers) {
    const auto promised = request.header("x-amz-trailer");
    if (promised.empty()) return;
    for (const std::string_view name : split(promised, ','))
        if (!findHeader(trailers, lowered(trimmed(name)))) throw S3Error("MalformedTrailerError");
}

}  // namespace

PayloadReceiver::PayloadReceiver(const Request& request, std::uint64_t limit,
                                 std::optional<ChunkSignatures> signatures, Memory* memory)
    : limit_(limit) {
    const Framing framing = framingOf(request);
    announced_ = announcedSize(request, framing);
    if (announced_) requireSize(*announced_);
    // What can't fit is refused before it is sent. It takes its room as it arrives.
    if (announced_ && memory) memory->require(*announced_);
    builder_ = BytesBuilder(announced_, memory);
    if (framing == Framing::None) return;
    if (framing != Framing::SignedChunks) signatures.reset();
    decoder_.emplace(std::move(signatures));
    framed_.resize(framedBufferSize);
}

BytesBuilder::Space PayloadReceiver::space() {
    return decoder_ ? BytesBuilder::Space{framed_.data(), framed_.size()} : builder_.space();
}

void PayloadReceiver::commit(std::size_t count) {
    if (decoder_)
        decoder_->feed({framed_.data(), count}, builder_);
    else
        builder_.commit(count);
    requireSize(builder_.size());
}

Payload PayloadReceiver::finish(const Request& request) {
    const bool complete = !decoder_ || decoder_->finished();
    if (!complete || (announced_ && *announced_ != builder_.size())) throw S3Error("IncompleteBody");
    Payload payload{builder_.finish(), {}};
    payload.md5 = digestOf(Digest::md5(), payload.bytes);
    checkHash(request, payload.bytes);
    checkChecksums(request.headers, payload.bytes, payload.md5);
    if (!decoder_) return payload;
    checkTrailers(request, decoder_->trailers());
    checkChecksums(decoder_->trailers(), payload.bytes, payload.md5);
    return payload;
}

void PayloadReceiver::requireSize(std::uint64_t size) const {
    if (size <= limit_) return;
    throw S3Error("EntityTooLarge")
        .with("ProposedSize", std::to_string(size))
        .with("MaxSizeAllowed", std::to_string(limit_));
}

}  // namespace s3server
