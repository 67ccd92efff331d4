#include "auth/AwsChunked.hpp"

#include <algorithm>
#include <charconv>

#include "operations/S3Error.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

constexpr std::size_t longestLine = 4096;

S3Error malformed() {
    return S3Error("InvalidRequest").saying("The aws-chunked body is malformed");
}

std::uint64_t parseChunkSize(std::string_view text) {
    std::uint64_t size = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, size, 16);
    if (error != std::errc{} || stop != end) throw malformed();
    return size;
}

void requireEqual(const std::string& expected, const std::string& given) {
    if (!equalInConstantTime(expected, given)) throw S3Error("SignatureDoesNotMatch");
}

}  // namespace

void AwsChunkedDecoder::feed(std::string_view bytes, BytesBuilder& out) {
    while (!bytes.empty()) {
        if (state_ == State::ChunkBytes) {
            bytes.remove_prefix(takeBytes(bytes, out));
            continue;
        }
        if (state_ == State::Finished) throw malformed();
        const auto end = bytes.find('\n');
        line_ += bytes.substr(0, end);
        if (line_.size() > longestLine) throw malformed();
        if (end == std::string_view::npos) return;
        bytes.remove_prefix(end + 1);
        if (!endsWith(line_, "\r")) throw malformed();
        line_.pop_back();
        takeLine(line_);
        line_.clear();
    }
}

void AwsChunkedDecoder::takeLine(std::string_view line) {
    switch (state_) {
        case State::ChunkHead:
            return startChunk(line);
        case State::ChunkEnd:
            if (!line.empty()) throw malformed();
            state_ = State::ChunkHead;
            return;
        default:
            return takeTrailer(line);
    }
}

void AwsChunkedDecoder::startChunk(std::string_view line) {
    const auto [size, extension] = splitAtFirst(line, ';');
    const auto [name, value] = splitAtFirst(extension, '=');
    left_ = parseChunkSize(size);
    last_ = left_ == 0;
    chunkSignature_ = name == "chunk-signature" ? value : std::string_view();
    state_ = State::ChunkBytes;
    if (last_) endChunk();
}

std::size_t AwsChunkedDecoder::takeBytes(std::string_view bytes, BytesBuilder& out) {
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(left_, bytes.size()));
    const auto taken = bytes.substr(0, count);
    out.append(taken);
    if (signatures_) chunkDigest_.update(taken);
    left_ -= count;
    if (left_ == 0) endChunk();
    return count;
}

void AwsChunkedDecoder::endChunk() {
    if (signatures_) requireEqual(signatures_->nextChunk(chunkDigest_.finish()), chunkSignature_);
    state_ = last_ ? State::Trailer : State::ChunkEnd;
}

void AwsChunkedDecoder::takeTrailer(std::string_view line) {
    if (line.empty()) return endTrailers();
    const auto [rawName, rawValue] = splitAtFirst(line, ':');
    const std::string name = lowered(trimmed(rawName));
    const std::string value(trimmed(rawValue));
    if (name == "x-amz-trailer-signature") {
        trailerSignature_ = value;
        return;
    }
    if (trailerLines_.size() > longestLine) throw malformed();
    trailerLines_ += name + ':' + value + '\n';
    trailers_.emplace_back(name, value);
}

void AwsChunkedDecoder::endTrailers() {
    if (signatures_ && !trailers_.empty())
        requireEqual(signatures_->trailer(trailerLines_), trailerSignature_);
    state_ = State::Finished;
}

}  // namespace s3server
