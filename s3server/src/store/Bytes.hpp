#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/Memory.hpp"

namespace s3server {

/// A long, immutable run of bytes in segments that any number of runs share. Copying one, joining two and
/// taking a piece of one copy no bytes.
class Bytes {
public:
    struct Segment {
        std::shared_ptr<const char> data;
        std::size_t size = 0;
        std::string_view view() const { return {data.get(), size}; }
    };

    Bytes() = default;
    /// The room is taken until the bytes are gone.
    explicit Bytes(std::string text, Room room = {});

    std::uint64_t size() const { return size_; }
    const std::vector<Segment>& segments() const { return segments_; }
    /// One copied text of it all.
    std::string text() const;

    void append(Segment segment);
    void append(const Bytes& other);
    /// The piece of `length` bytes from `first` on, all of which must exist.
    Bytes piece(std::uint64_t first, std::uint64_t length) const;

private:
    std::vector<Segment> segments_;
    std::uint64_t size_ = 0;
};

/// Fills new segments of bounded size one after another.
class BytesBuilder {
public:
    struct Space {
        char* data;
        std::size_t size;
    };

    /// With the length known beforehand, no memory is left unused at the end. With a memory, every segment
    /// takes room in it until nothing shares the segment any more.
    explicit BytesBuilder(std::optional<std::uint64_t> expected = std::nullopt, Memory* memory = nullptr)
        : expected_(expected), memory_(memory) {}

    /// Where the next bytes go, never empty; valid until the next call of any member. Throws S3Error
    /// InsufficientStorage.
    Space space();
    /// The first `count` bytes of the space were written.
    void commit(std::size_t count);
    /// Throws likewise.
    void append(std::string_view bytes);
    std::uint64_t size() const { return filled_.size() + used_; }
    /// Ends the building.
    Bytes finish();

private:
    void seal();
    std::size_t nextCapacity() const;

    std::optional<std::uint64_t> expected_;
    Memory* memory_;
    Bytes filled_;
    std::shared_ptr<char> segment_;
    std::size_t capacity_ = 0;
    std::size_t used_ = 0;
};

}  // namespace s3server
