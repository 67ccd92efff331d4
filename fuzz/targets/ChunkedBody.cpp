#include "auth/AwsChunked.hpp"

#include <algorithm>

#include "FuzzTarget.hpp"
#include "operations/S3Error.hpp"

using namespace fuzz;
using namespace s3server;

namespace {

struct Decoded {
    std::string bytes;
    Headers trailers;
    bool finished = false;
    std::string refusal;
};

bool operator==(const Decoded& left, const Decoded& right) {
    return left.bytes == right.bytes && left.trailers == right.trailers && left.finished == right.finished &&
           left.refusal == right.refusal;
}

ChunkSignatures signatures() {
    return {"key", "20130524T000000Z", {"20130524", "us-east-1", "s3"}, "seed"};
}

/// Feeds the body in pieces of at most `step` bytes. What came before a refusal doesn't count.
Decoded decode(std::string_view body, std::size_t step, bool isSigned) {
    AwsChunkedDecoder decoder(isSigned ? std::optional(signatures()) : std::nullopt);
    BytesBuilder bytes;
    try {
        while (!body.empty()) {
            decoder.feed(body.substr(0, step), bytes);
            body.remove_prefix(std::min(step, body.size()));
        }
    } catch (const S3Error& error) {
        return {{}, {}, false, std::string(error.code())};
    }
    return {bytes.finish().text(), decoder.trailers(), decoder.finished(), {}};
}

}  // namespace

// The content coding aws-chunked, with and without signatures.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto body = textOf(data, size);
    for (const bool isSigned : {false, true}) {
        const Decoded whole = decode(body, size, isSigned);
        require(whole.bytes.size() <= size, "decoding never grows its input");
        require(!isSigned || !whole.finished, "nobody guesses a signature");
        require(whole == decode(body, 1, isSigned), "a body is the same however it arrives");
    }
    return 0;
}
