#include "core/RequestBody.hpp"

#include <gtest/gtest.h>

#include <array>
#include <sstream>

#include "core/UnsendableRequest.hpp"
#include "standin/aws/Streams.hpp"

using standin::aws::RequestBody;
using standin::aws::UnsendableRequest;

namespace {

/// Says that its end is 5 bytes behind its data.
class BoastingBuffer : public std::stringbuf {
public:
    using std::stringbuf::stringbuf;

private:
    pos_type seekoff(off_type offset, std::ios_base::seekdir from, std::ios_base::openmode which) override {
        if (from != std::ios_base::cur) atEnd_ = from == std::ios_base::end;
        const pos_type position = std::stringbuf::seekoff(offset, from, which);
        return atEnd_ ? position + off_type(5) : position;
    }

    bool atEnd_ = false;
};

std::shared_ptr<std::iostream> streamOf(const std::string& text) {
    return std::make_shared<std::stringstream>(text);
}

std::string readAll(RequestBody& body) {
    std::array<char, 4> piece{};
    std::string all;
    while (const std::size_t count = body.read(piece.data(), piece.size()))
        all.append(piece.data(), count);
    return all;
}

TEST(RequestBody, IsEmptyWithoutStream) {
    RequestBody body(nullptr);
    EXPECT_EQ(body.size(), 0U);
    EXPECT_EQ(readAll(body), "");
    EXPECT_TRUE(body.rewind());
    EXPECT_EQ(body.digests(false, true).md5, "1B2M2Y8AsgTpgAmY7PhCfg==");
}

TEST(RequestBody, StartsAtTheBeginningWhateverThePosition) {
    const auto stream = streamOf("0123456789");
    stream->seekg(4);
    RequestBody body(stream);
    EXPECT_EQ(body.size(), 10U);
    EXPECT_EQ(readAll(body), "0123456789");
}

TEST(RequestBody, IsReadAgainAfterRewinding) {
    RequestBody body(streamOf("0123456789"));
    readAll(body);
    EXPECT_TRUE(body.rewind());
    EXPECT_EQ(readAll(body), "0123456789");
}

TEST(RequestBody, LeavesItsStreamAsAReaderWhoFoundNothingMore) {
    const auto stream = streamOf("0123456789");
    RequestBody body(stream);
    readAll(body);
    EXPECT_TRUE(stream->eof());
    EXPECT_TRUE(stream->fail());
    EXPECT_FALSE(stream->bad());
}

TEST(RequestBody, IsTheStreamsBeginningUpToALimit) {
    RequestBody body(streamOf("0123456789"), 6);
    EXPECT_EQ(body.size(), 6U);
    EXPECT_EQ(readAll(body), "012345");
    EXPECT_THROW(RequestBody(streamOf("0123456789"), 11), UnsendableRequest);
}

TEST(RequestBody, LeavesWhatIsBehindItsLimitToBeRead) {
    const auto stream = streamOf("0123456789");
    RequestBody body(stream, 6);
    readAll(body);
    EXPECT_EQ(stream->tellg(), 6);
    EXPECT_TRUE(stream->good());
}

TEST(RequestBody, GivesTheDigestsAskedFor) {
    RequestBody body(streamOf("hello world"));
    const auto both = body.digests(true, true);
    EXPECT_EQ(both.sha256, "b94d27b9934d3e08a52e52d7da7dabfac484efe37a5380ee9088f7ace2efcde9");
    EXPECT_EQ(both.md5, "XrY7u+Ae7tCTyyK7j1rNww==");
    EXPECT_EQ(body.digests(true, false).md5, "");
    EXPECT_EQ(body.digests(false, true).sha256, "");
    EXPECT_EQ(readAll(body), "hello world");
}

TEST(RequestBody, DigestsMoreThanOnePiece) {
    RequestBody body(streamOf(std::string(1048577, 'x')));
    RequestBody again(streamOf(std::string(1048577, 'x')));
    EXPECT_EQ(body.digests(true, false).sha256, again.digests(true, true).sha256);
    RequestBody shorter(streamOf(std::string(1048576, 'x')));
    EXPECT_NE(body.digests(true, false).sha256, shorter.digests(true, false).sha256);
}

TEST(RequestBody, TakesAStreamThatWasReadToItsEnd) {
    const auto stream = streamOf("0123456789");
    stream->setstate(std::ios_base::eofbit | std::ios_base::failbit);
    RequestBody body(stream);
    EXPECT_EQ(readAll(body), "0123456789");
}

TEST(RequestBody, RefusesAStreamThatHasFailed) {
    for (const auto state : {std::ios_base::badbit, std::ios_base::failbit}) {
        const auto stream = streamOf("0123456789");
        stream->setstate(state);
        EXPECT_THROW(RequestBody{stream}, UnsendableRequest);
    }
}

TEST(RequestBody, RefusesAStreamThatCannotBeRepositioned) {
    EXPECT_THROW(RequestBody(std::make_shared<StreamOver<UnseekableBuffer>>("0123456789")),
                 UnsendableRequest);
    EXPECT_THROW(RequestBody(std::make_shared<StreamOver<UnseekableBuffer>>("")), UnsendableRequest);
}

TEST(RequestBody, RefusesAStreamThatEndsBeforeItsEnd) {
    RequestBody body(std::make_shared<StreamOver<BoastingBuffer>>("0123456789"));
    EXPECT_EQ(body.size(), 15U);
    EXPECT_THROW(body.digests(true, false), UnsendableRequest);
}

TEST(RequestBody, RefusesAStreamThatThrowsWhenRead) {
    RequestBody body(std::make_shared<StreamOver<ThrowingBuffer>>("0123456789"));
    EXPECT_THROW(body.digests(true, false), UnsendableRequest);
}

}  // namespace
