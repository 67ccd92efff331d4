#include "core/RequestBody.hpp"

#include <algorithm>
#include <array>

#include "core/Digests.hpp"
#include "core/UnsendableRequest.hpp"

namespace standin::aws {
namespace {

constexpr std::uint64_t digestPieceSize = 65536;

std::uint64_t measure(std::iostream& stream) {
    const bool failed = stream.bad() || (stream.fail() && !stream.eof());
    if (failed) throw UnsendableRequest("The request body's stream has failed before");
    stream.clear();
    stream.seekg(0, std::ios_base::end);
    const std::streamoff end = stream.tellg();
    stream.seekg(0, std::ios_base::beg);
    if (!stream || end < 0) throw UnsendableRequest("The request body's stream can't be repositioned");
    return static_cast<std::uint64_t>(end);
}

}  // namespace

RequestBody::RequestBody(std::shared_ptr<std::iostream> stream, std::optional<std::uint64_t> limit)
    : stream_(std::move(stream)), size_(stream_ ? measure(*stream_) : 0) {
    if (limit && *limit > size_)
        throw UnsendableRequest("The request body is shorter than its content length");
    size_ = limit.value_or(size_);
}

BodyDigests RequestBody::digests(bool withSha256, bool withMd5) {
    if (!withSha256 && !withMd5) return {};
    std::optional<RunningDigest> sha256;
    std::optional<RunningDigest> md5;
    if (withSha256) sha256.emplace(EVP_sha256());
    if (withMd5) md5.emplace(EVP_md5());
    rewind();
    std::array<char, digestPieceSize> piece;  // NOLINT(cppcoreguidelines-pro-type-member-init): read into
    while (const std::size_t count = read(piece.data(), piece.size())) {
        if (sha256) sha256->add(piece.data(), count);
        if (md5) md5->add(piece.data(), count);
    }
    rewind();
    return {sha256 ? toHex(sha256->finish()) : "", md5 ? toBase64(md5->finish()) : ""};
}

bool RequestBody::rewind() {
    sent_ = 0;
    if (!stream_) return true;
    stream_->clear();
    stream_->seekg(0, std::ios_base::beg);
    return stream_->good();
}

std::size_t RequestBody::read(char* buffer, std::size_t count) {
    const std::uint64_t wanted = std::min<std::uint64_t>(count, size_ - sent_);
    if (wanted == 0) return 0;
    stream_->read(buffer, static_cast<std::streamsize>(wanted));
    if (stream_->gcount() != static_cast<std::streamsize>(wanted)) {
        throw UnsendableRequest("The request body can't be read to its end");
    }
    sent_ += wanted;
    if (sent_ == size_ && stream_->peek() == std::iostream::traits_type::eof()) stream_->get();
    return static_cast<std::size_t>(wanted);
}

}  // namespace standin::aws
