#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

namespace s3server {

/// How much memory there is for what is stored and received, and how much of it is taken. Every member may be
/// called from any thread.
class Memory {
public:
    explicit Memory(std::uint64_t limit) : limit_(limit) {}
    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    std::uint64_t used() const { return used_; }
    /// Throws S3Error InsufficientStorage if there isn't so much left. Takes nothing.
    void require(std::uint64_t bytes) const;

private:
    friend class Room;

    void take(std::uint64_t bytes);
    void give(std::uint64_t bytes) { used_ -= bytes; }

    const std::uint64_t limit_;
    std::atomic<std::uint64_t> used_{0};
};

/// So many bytes of the memory, taken as long as this lives, which the memory outlives. Without a memory they
/// are no matter.
class Room {
public:
    Room() = default;
    /// Throws S3Error InsufficientStorage.
    Room(Memory* memory, std::uint64_t bytes) : memory_(memory), bytes_(bytes) {
        if (memory_) memory_->take(bytes_);
    }
    Room(Room&& other) noexcept : memory_(std::exchange(other.memory_, nullptr)), bytes_(other.bytes_) {}
    Room(const Room&) = delete;
    Room& operator=(const Room&) = delete;
    ~Room() {
        if (memory_) memory_->give(bytes_);
    }

private:
    Memory* memory_ = nullptr;
    std::uint64_t bytes_ = 0;
};

}  // namespace s3server
