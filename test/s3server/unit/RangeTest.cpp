#include "http/Range.hpp"

#include <gmock/gmock.h>

#include "Refusal.hpp"

namespace s3server::test {
namespace {

struct Case {
    std::string header;
    std::uint64_t size;
    std::uint64_t first;
    std::uint64_t length;
};

TEST(RequestedRange, IsCutToWhatThereIs) {
    const Case cases[] = {
        {"bytes=0-0", 10, 0, 1},
        {"bytes=2-5", 10, 2, 4},
        {"bytes=5-", 10, 5, 5},
        {"bytes=9-100", 10, 9, 1},
        {"bytes=-3", 10, 7, 3},
        {"bytes=-100", 10, 0, 10},
        {"bytes=0-18446744073709551615", 10, 0, 10},
        {"bytes=0-99999999999999999999999", 10, 0, 10},
    };
    for (const auto& [header, size, first, length] : cases) {
        const auto range = requestedRange(header, size);
        ASSERT_TRUE(range) << header;
        EXPECT_EQ(range->first, first) << header;
        EXPECT_EQ(range->length, length) << header;
    }
}

TEST(RequestedRange, ThatIsNotUnderstoodIsIgnored) {
    for (const char* const header :
         {"", "bytes", "bytes=", "bytes=-", "bytes=a-b", "bytes=5-2", "bytes=0-1,3-4", "bytes= 0-1",
          "items=0-1", "bytes=1", "bytes=0x1-2", "bytes=+1-2"})
        EXPECT_FALSE(requestedRange(header, 10)) << header;
}

TEST(RequestedRange, WithoutAByteIsRefusedWithTheSize) {
    for (const char* const header : {"bytes=10-", "bytes=10-20", "bytes=-0", "bytes=99999999999999999999-"})
        EXPECT_EQ(codeOf([header] { requestedRange(header, 10); }), "InvalidRange") << header;
    EXPECT_EQ(codeOf([] { requestedRange("bytes=0-", 0); }), "InvalidRange");
    EXPECT_EQ(codeOf([] { requestedRange("bytes=-1", 0); }), "InvalidRange");
    const auto refusal = refusalOf([] { requestedRange("bytes=10-", 10); });
    EXPECT_EQ(refusal->status(), 416);
    EXPECT_THAT(errorDocument(*refusal, "", ""),
                testing::HasSubstr(
                    "<RangeRequested>bytes=10-</RangeRequested><ActualObjectSize>10</ActualObjectSize>"));
}

TEST(CopiedRange, MustBeFirstAndLastByteThatExist) {
    EXPECT_EQ(copiedRange("bytes=0-9", 10).length, 10u);
    EXPECT_EQ(copiedRange("bytes=3-3", 10).first, 3u);
    for (const char* const header : {"", "bytes=0-", "bytes=-3", "bytes=5-2", "bytes=0-10", "0-3",
                                     "bytes=a-b", "bytes=0-18446744073709551615"})
        EXPECT_EQ(codeOf([header] { copiedRange(header, 10); }), "InvalidArgument") << header;
}

}  // namespace
}  // namespace s3server::test
