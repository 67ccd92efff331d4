#pragma once

#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

/// A text whose position can be neither told nor set.
class UnseekableBuffer : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;

private:
    pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override {
        return off_type(-1);
    }
    pos_type seekpos(pos_type, std::ios_base::openmode) override { return off_type(-1); }
};

/// A text that can't be read.
class ThrowingBuffer : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;

private:
    std::streamsize xsgetn(char*, std::streamsize) override { throw std::runtime_error("no"); }
};

/// Has its end five bytes behind the last one it holds.
class OverstatingBuffer : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;

private:
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override {
        const off_type position = std::stringbuf::seekoff(offset, from, which);
        if (from != std::ios_base::cur) atEnd_ = from == std::ios_base::end;
        return atEnd_ ? position + 5 : position;
    }

    bool atEnd_ = false;
};

/// A stream that owns its buffer.
template <typename Buffer>
struct StreamOver : std::iostream {
    explicit StreamOver(const std::string& text) : std::iostream(nullptr), buffer(text) { rdbuf(&buffer); }
    Buffer buffer;
};
