#include "core/BufferStream.hpp"

#include <aws/core/utils/stream/ResponseStream.h>
#include <gtest/gtest.h>

#include <sstream>

using standin::aws::BufferStream;

namespace {

std::string rest(std::istream& stream) {
    std::ostringstream copy;
    copy << stream.rdbuf();
    return copy.str();
}

TEST(BufferStream, StartsAtItsBeginning) {
    BufferStream stream("hello world");
    EXPECT_EQ(stream.tellg(), 0);
    EXPECT_EQ(rest(stream), "hello world");
}

TEST(BufferStream, IsCopiedByItsBuffer) {
    BufferStream stream("hello world");
    std::ostringstream copy;
    copy << stream.rdbuf();
    EXPECT_EQ(copy.str(), "hello world");
    EXPECT_FALSE(copy.fail());
}

TEST(BufferStream, LeavesACopyFailedWhenItIsEmpty) {
    BufferStream stream("");
    std::ostringstream copy;
    copy << stream.rdbuf();
    EXPECT_TRUE(copy.fail());
}

TEST(BufferStream, SeeksFromBeginningPositionAndEnd) {
    BufferStream stream("0123456789");
    stream.seekg(4);
    EXPECT_EQ(stream.get(), '4');
    stream.seekg(2, std::ios_base::cur);
    EXPECT_EQ(stream.get(), '7');
    stream.seekg(-1, std::ios_base::end);
    EXPECT_EQ(stream.get(), '9');
    stream.seekg(0, std::ios_base::end);
    EXPECT_EQ(stream.tellg(), 10);
}

TEST(BufferStream, RefusesToSeekOutsideOfItsBytes) {
    for (const int position : {-1, 11}) {
        BufferStream stream("0123456789");
        stream.seekg(position);
        EXPECT_TRUE(stream.fail()) << position;
    }
}

TEST(BufferStream, RefusesToBeWritten) {
    BufferStream stream("0123456789");
    stream << "x";
    EXPECT_TRUE(stream.bad());
}

TEST(BufferStream, HoldsBytesOfEveryValue) {
    std::string bytes(256, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i);
    BufferStream stream(bytes);
    EXPECT_EQ(rest(stream), bytes);
}

TEST(ResponseStream, KeepsItsStreamWhenItMoves) {
    Aws::Utils::Stream::ResponseStream first(new BufferStream("hello"));
    const auto* const underlying = &first.GetUnderlyingStream();
    const Aws::Utils::Stream::ResponseStream second = std::move(first);
    EXPECT_EQ(&second.GetUnderlyingStream(), underlying);
    EXPECT_EQ(rest(second.GetUnderlyingStream()), "hello");
}

}  // namespace
