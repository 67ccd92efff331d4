#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <streambuf>

namespace storage::cloudprovider {

/// Counts the bytes written to it and keeps those of one window in memory of the caller's.
class WindowBuffer : public std::streambuf {
public:
    /// Keeps `count` bytes from byte `first` on.
    WindowBuffer(char* memory, std::uint64_t first, std::size_t count)
        : memory_(memory), first_(first), end_(first + count) {}

    std::uint64_t written() const { return written_; }

protected:
    std::streamsize xsputn(const char* bytes, std::streamsize count) override {
        const std::uint64_t begin = written_;
        written_ += static_cast<std::uint64_t>(count);
        const std::uint64_t from = std::max(begin, first_);
        const std::uint64_t to = std::min(written_, end_);
        if (from < to) std::memcpy(memory_ + (from - first_), bytes + (from - begin), to - from);
        return count;
    }

    int_type overflow(int_type c) override {
        const char byte = traits_type::to_char_type(c);
        if (!traits_type::eq_int_type(c, traits_type::eof())) xsputn(&byte, 1);
        return traits_type::not_eof(c);
    }

private:
    char* const memory_;
    const std::uint64_t first_;
    const std::uint64_t end_;
    std::uint64_t written_ = 0;
};

}  // namespace storage::cloudprovider
