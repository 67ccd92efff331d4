#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <string>

namespace standin::aws {

/// What a request says about its body. Empty: not asked for.
struct BodyDigests {
    std::string sha256;  ///< in hexadecimal
    std::string md5;     ///< in Base64
};

/// A request's body: a stream from its beginning, whatever its position was. Not for several threads at once.
class RequestBody {
public:
    /// Measures the stream; null is an empty body. `limit` bytes of it are the body, all of them without.
    /// Throws UnsendableRequest for a stream that failed before, can't be repositioned or is shorter than
    /// `limit`.
    explicit RequestBody(std::shared_ptr<std::iostream> stream, std::optional<std::uint64_t> limit = {});

    std::uint64_t size() const { return size_; }

    /// One pass over the body. Throws UnsendableRequest when it can't be read to its end.
    BodyDigests digests(bool withSha256, bool withMd5);

    /// Back to the beginning. False when the stream refuses.
    bool rewind();

    /// Up to `count` bytes; 0 at the end. A stream read to its end is left as a reader leaves it who
    /// found nothing more: with eof and fail set. Throws UnsendableRequest when the stream ends too early.
    std::size_t read(char* buffer, std::size_t count);

private:
    std::shared_ptr<std::iostream> stream_;
    std::uint64_t size_ = 0;
    std::uint64_t sent_ = 0;
};

}  // namespace standin::aws
