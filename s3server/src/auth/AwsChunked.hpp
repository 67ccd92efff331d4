#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "auth/SignatureV4.hpp"
#include "s3server/Headers.hpp"
#include "store/Bytes.hpp"
#include "text/Digest.hpp"

namespace s3server {

/// Takes the content coding "aws-chunked" apart while it arrives: chunks "SIZE[;chunk-signature=HEX]CRLF
/// bytes CRLF", the last of size 0, then trailing headers and an empty line.
class AwsChunkedDecoder {
public:
    /// With `signatures`, every chunk and the trailing headers must be signed.
    explicit AwsChunkedDecoder(std::optional<ChunkSignatures> signatures)
        : signatures_(std::move(signatures)) {}

    /// Appends what the next bytes of the body contain to `out`. Throws S3Error.
    void feed(std::string_view bytes, BytesBuilder& out);
    bool finished() const { return state_ == State::Finished; }
    /// Names in lower case; complete once finished.
    const Headers& trailers() const { return trailers_; }

private:
    enum class State { ChunkHead, ChunkBytes, ChunkEnd, Trailer, Finished };

    void takeLine(std::string_view line);
    void startChunk(std::string_view line);
    void endChunk();
    void takeTrailer(std::string_view line);
    void endTrailers();
    std::size_t takeBytes(std::string_view bytes, BytesBuilder& out);

    std::optional<ChunkSignatures> signatures_;
    State state_ = State::ChunkHead;
    std::string line_;
    std::uint64_t left_ = 0;
    bool last_ = false;
    std::string chunkSignature_;
    Digest chunkDigest_ = Digest::sha256();
    Headers trailers_;
    std::string trailerLines_;
    std::string trailerSignature_;
};

}  // namespace s3server
