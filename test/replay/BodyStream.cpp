#include "replay/BodyStream.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include <unistd.h>

namespace replay {
namespace {

class NonSeekableBuffer : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;

private:
    pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override { return failed(); }
    pos_type seekpos(pos_type, std::ios_base::openmode) override { return failed(); }

    static pos_type failed() { return pos_type(off_type(-1)); }
};

/// Has its end some bytes behind the last one it holds.
class OverstatingBuffer : public std::stringbuf {
public:
    OverstatingBuffer(const std::string& content, off_type extra)
        : std::stringbuf(content), held_(static_cast<off_type>(content.size())), extra_(extra) {}

private:
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode) override {
        const off_type base = from == std::ios_base::end   ? held_ + extra_
                              : from == std::ios_base::cur ? position()
                                                           : 0;
        return seekpos(base + offset, std::ios_base::in);
    }

    pos_type seekpos(pos_type target, std::ios_base::openmode) override {
        const off_type inside = std::min<off_type>(target, held_);
        behind_ = target - inside;
        std::stringbuf::seekpos(inside, std::ios_base::in);
        return target;
    }

    off_type position() const { return (gptr() - eback()) + behind_; }

    off_type held_;
    off_type extra_;
    off_type behind_ = 0;  // how far the position lies behind what is held
};

/// Has a size and a position, and throws when read.
class ThrowingBuffer : public std::streambuf {
public:
    explicit ThrowingBuffer(std::size_t size) : size_(static_cast<off_type>(size)) {}

private:
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode) override {
        const off_type base = from == std::ios_base::end ? size_ : from == std::ios_base::cur ? position_ : 0;
        return position_ = base + offset;
    }

    pos_type seekpos(pos_type position, std::ios_base::openmode) override { return position_ = position; }

    int_type underflow() override { throw std::runtime_error("this buffer can't be read"); }

    off_type size_;
    off_type position_ = 0;
};

/// A file that has no name any more.
class TemporaryFileBuffer : public std::filebuf {
public:
    explicit TemporaryFileBuffer(const std::string& content) {
        std::string path = (std::filesystem::temp_directory_path() / "replay-body-XXXXXX").string();
        const int file = mkstemp(path.data());
        if (file < 0 || !open(path, std::ios::in | std::ios::out | std::ios::binary))
            throw std::runtime_error("can't make " + path);
        ::close(file);
        std::filesystem::remove(path);
        sputn(content.data(), static_cast<std::streamsize>(content.size()));
        pubseekpos(0);
    }
};

class BodyStream : public std::iostream {
public:
    explicit BodyStream(std::unique_ptr<std::streambuf> buffer)
        : std::iostream(buffer.get()), buffer_(std::move(buffer)) {}

private:
    std::unique_ptr<std::streambuf> buffer_;
};

std::string contentOf(const Json& description) {
    if (description.contains("text")) return description["text"];
    constexpr std::string_view pattern = "0123456789abcdef";
    std::string content(description.at("size").get<std::size_t>(), '\0');
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = pattern[i % pattern.size()];
    return content;
}

std::unique_ptr<std::streambuf> makeBuffer(const Json& description) {
    const std::string kind = description.value("kind", "memory");
    const std::string content = contentOf(description);
    if (kind == "memory") return std::make_unique<std::stringbuf>(content);
    if (kind == "file") return std::make_unique<TemporaryFileBuffer>(content);
    if (kind == "nonseekable") return std::make_unique<NonSeekableBuffer>(content);
    if (kind == "says-longer")
        return std::make_unique<OverstatingBuffer>(content, description.at("extra").get<std::streamoff>());
    if (kind == "throws") return std::make_unique<ThrowingBuffer>(content.size());
    throw std::runtime_error("unknown kind of body: " + kind);
}

std::ios_base::iostate stateNamed(const std::string& name) {
    if (name == "eof") return std::ios_base::eofbit;
    if (name == "bad") return std::ios_base::badbit;
    if (name == "fail") return std::ios_base::failbit;
    throw std::runtime_error("unknown stream state: " + name);
}

}  // namespace

std::shared_ptr<std::iostream> makeBodyStream(const Json& description) {
    if (description.value("kind", "") == "null") return nullptr;
    auto stream = std::make_shared<BodyStream>(makeBuffer(description));
    if (description.contains("advance")) stream->seekg(description["advance"].get<std::streamoff>());
    if (description.contains("state")) stream->setstate(stateNamed(description["state"]));
    return stream;
}

Json describeAfterCall(std::iostream* stream) {
    if (stream == nullptr) return Json::object();
    const std::streamoff position = stream->rdbuf()->pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    const int state = (stream->bad() ? 1 : 0) + (stream->eof() ? 2 : 0) +
                      ((stream->rdstate() & std::ios_base::failbit) != 0 ? 4 : 0);
    return {{"stream_position_after", position}, {"stream_state_after", state}};
}

}  // namespace replay
