#include "store/Bytes.hpp"

#include <algorithm>
#include <cstring>

namespace s3server {
namespace {

constexpr std::size_t smallestSegment = std::size_t{16} << 10U;
constexpr std::size_t largestSegment = std::size_t{1} << 20U;

struct Text {
    std::string text;
    Room room;
};

struct Block {
    Room room;
    std::unique_ptr<char[]> bytes;
};

/// Not set to anything.
std::shared_ptr<char> newBlock(Memory* memory, std::size_t size) {
    Room room(memory, size);
    const auto block =
        std::make_shared<Block>(Block{std::move(room), std::unique_ptr<char[]>(new char[size])});
    return {block, block->bytes.get()};
}

}  // namespace

Bytes::Bytes(std::string text, Room room) {
    const auto owner = std::make_shared<const Text>(Text{std::move(text), std::move(room)});
    append(Segment{std::shared_ptr<const char>(owner, owner->text.data()), owner->text.size()});
}

std::string Bytes::text() const {
    std::string text;
    text.reserve(size_);
    for (const Segment& segment : segments_)
        text += segment.view();
    return text;
}

void Bytes::append(Segment segment) {
    if (segment.size == 0) return;
    size_ += segment.size;
    segments_.push_back(std::move(segment));
}

void Bytes::append(const Bytes& other) {
    segments_.insert(segments_.end(), other.segments_.begin(), other.segments_.end());
    size_ += other.size_;
}

Bytes Bytes::piece(std::uint64_t first, std::uint64_t length) const {
    Bytes piece;
    for (const Segment& segment : segments_) {
        if (length == 0) break;
        if (first >= segment.size) {
            first -= segment.size;
            continue;
        }
        const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(length, segment.size - first));
        piece.append({std::shared_ptr<const char>(segment.data, segment.data.get() + first), count});
        length -= count;
        first = 0;
    }
    return piece;
}

BytesBuilder::Space BytesBuilder::space() {
    if (used_ == capacity_) {
        seal();
        const std::size_t capacity = nextCapacity();
        segment_ = newBlock(memory_, capacity);
        capacity_ = capacity;
    }
    return {segment_.get() + used_, capacity_ - used_};
}

void BytesBuilder::commit(std::size_t count) {
    used_ += count;
}

void BytesBuilder::append(std::string_view bytes) {
    while (!bytes.empty()) {
        const Space target = space();
        const auto count = std::min(target.size, bytes.size());
        std::memcpy(target.data, bytes.data(), count);
        commit(count);
        bytes.remove_prefix(count);
    }
}

Bytes BytesBuilder::finish() {
    seal();
    return std::move(filled_);
}

void BytesBuilder::seal() {
    filled_.append({std::move(segment_), used_});
    segment_ = nullptr;
    capacity_ = 0;
    used_ = 0;
}

std::size_t BytesBuilder::nextCapacity() const {
    if (expected_ && *expected_ > filled_.size())
        return static_cast<std::size_t>(std::min<std::uint64_t>(*expected_ - filled_.size(), largestSegment));
    return std::clamp(static_cast<std::size_t>(filled_.size()), smallestSegment, largestSegment);
}

}  // namespace s3server
