#include "store/Bytes.hpp"

#include <gmock/gmock.h>

namespace s3server::test {
namespace {

TEST(Bytes, ShareTheirMemoryWhenJoinedAndCut) {
    const Bytes first(std::string("abcdef"));
    Bytes joined = first;
    joined.append(Bytes(std::string("ghi")));
    const Bytes piece = joined.piece(4, 4);
    EXPECT_EQ(joined.text(), "abcdefghi");
    EXPECT_EQ(piece.text(), "efgh");
    EXPECT_EQ(piece.segments().front().data.get(), first.segments().front().data.get() + 4);
}

TEST(Bytes, CutToNothingHaveNoSegments) {
    EXPECT_TRUE(Bytes(std::string("abc")).piece(3, 0).segments().empty());
    EXPECT_TRUE(Bytes(std::string()).segments().empty());
}

TEST(BytesBuilder, TakesNoMoreMemoryThanWasAnnounced) {
    BytesBuilder builder(5);
    EXPECT_EQ(builder.space().size, 5u);
    builder.append("hello");
    EXPECT_EQ(builder.finish().text(), "hello");
}

TEST(BytesBuilder, FillsBoundedSegmentsWhateverIsAnnounced) {
    BytesBuilder builder(std::uint64_t{5} << 30U);
    EXPECT_LE(builder.space().size, std::size_t{1} << 20U);
}

TEST(BytesBuilder, KeepsTheOrderOverManySegments) {
    std::string text;
    BytesBuilder builder;
    for (int i = 0; i < 100000; ++i) {
        const std::string piece = std::to_string(i) + ' ';
        text += piece;
        builder.append(piece);
    }
    EXPECT_EQ(builder.size(), text.size());
    const Bytes bytes = builder.finish();
    EXPECT_GT(bytes.segments().size(), 1u);
    EXPECT_EQ(bytes.text(), text);
}

TEST(BytesBuilder, GoesOnAfterASpaceThatWasFilledInPart) {
    BytesBuilder builder(6);
    builder.space().data[0] = 'a';
    builder.commit(1);
    const auto rest = builder.space();
    ASSERT_EQ(rest.size, 5u);
    rest.data[0] = 'b';
    builder.commit(1);
    EXPECT_EQ(builder.finish().text(), "ab");
}

}  // namespace
}  // namespace s3server::test
