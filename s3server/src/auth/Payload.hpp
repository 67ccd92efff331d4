#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "auth/AwsChunked.hpp"
#include "http/Request.hpp"
#include "store/Bytes.hpp"

namespace s3server {

/// A request's body as it is meant: framing taken off, and all that the request says of it found true.
struct Payload {
    Bytes bytes;
    /// Raw, 16 bytes.
    std::string md5;
};

/// Takes a request's body while it arrives, straight into the segments it will be kept in.
class PayloadReceiver {
public:
    /// `limit` is the most bytes the payload may have. `signatures` are needed for a body that is signed
    /// chunk by chunk; without them its chunk signatures are not checked. With a memory, the payload takes
    /// room in it. Throws S3Error.
    PayloadReceiver(const Request& request, std::uint64_t limit, std::optional<ChunkSignatures> signatures,
                    Memory* memory = nullptr);

    /// Where the next bytes of the body go, never empty; valid until the next call of any member. Throws
    /// S3Error.
    BytesBuilder::Space space();
    /// The first `count` bytes of the space arrived. Throws S3Error.
    void commit(std::size_t count);
    /// The body has arrived as a whole. Throws S3Error if it isn't what `request` says of it.
    Payload finish(const Request& request);

private:
    void requireSize(std::uint64_t size) const;

    std::uint64_t limit_;
    std::optional<std::uint64_t> announced_;
    std::optional<AwsChunkedDecoder> decoder_;
    std::vector<char> framed_;
    BytesBuilder builder_;
};

}  // namespace s3server
