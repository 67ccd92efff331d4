#pragma once

#include <istream>
#include <streambuf>
#include <string>

namespace standin::aws {

/// Reads bytes it owns, and seeks in them. Nothing can be written.
class ReadBuffer : public std::streambuf {
public:
    explicit ReadBuffer(std::string bytes);

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

private:
    std::string bytes_;
};

/// A stream over bytes moved into it, positioned at their beginning.
class BufferStream : public std::iostream {
public:
    explicit BufferStream(std::string bytes) : std::iostream(nullptr), buffer_(std::move(bytes)) {
        rdbuf(&buffer_);
    }

private:
    ReadBuffer buffer_;
};

}  // namespace standin::aws
