#include "operations/Conditions.hpp"

#include <gmock/gmock.h>

namespace s3server::test {
namespace {

const TimePoint changed = *parseHttpDate("Fri, 24 May 2013 00:00:00 GMT");
const std::string before = "Thu, 23 May 2013 23:59:59 GMT";
const std::string same = "Fri, 24 May 2013 00:00:00 GMT";

Verdict judged(const Headers& headers, std::string_view prefix = "") {
    Request request;
    request.headers = headers;
    return judge(request, Object{{}, "abc", {}, changed}, prefix);
}

TEST(Conditions, LetARequestWithoutAnyPass) {
    EXPECT_EQ(judged({}), Verdict::Go);
}

TEST(Conditions, CompareTagsWithAndWithoutQuotesAndInLists) {
    EXPECT_EQ(judged({{"if-match", "\"abc\""}}), Verdict::Go);
    EXPECT_EQ(judged({{"if-match", "abc"}}), Verdict::Go);
    EXPECT_EQ(judged({{"if-match", "\"x\", \"abc\""}}), Verdict::Go);
    EXPECT_EQ(judged({{"if-match", "*"}}), Verdict::Go);
    EXPECT_EQ(judged({{"if-match", "\"x\""}}), Verdict::Failed);
    EXPECT_EQ(judged({{"if-none-match", "W/\"abc\""}}), Verdict::NotModified);
    EXPECT_EQ(judged({{"if-none-match", "\"x\""}}), Verdict::Go);
}

TEST(Conditions, CompareDatesToTheSecond) {
    EXPECT_EQ(judged({{"if-modified-since", same}}), Verdict::NotModified);
    EXPECT_EQ(judged({{"if-modified-since", before}}), Verdict::Go);
    EXPECT_EQ(judged({{"if-unmodified-since", same}}), Verdict::Go);
    EXPECT_EQ(judged({{"if-unmodified-since", before}}), Verdict::Failed);
}

TEST(Conditions, PreferTagsToDates) {
    EXPECT_EQ(judged({{"if-match", "abc"}, {"if-unmodified-since", before}}), Verdict::Go);
    EXPECT_EQ(judged({{"if-none-match", "x"}, {"if-modified-since", same}}), Verdict::Go);
}

TEST(Conditions, IgnoreDatesThatAreNone) {
    EXPECT_EQ(judged({{"if-modified-since", "tomorrow"}}), Verdict::Go);
}

TEST(Conditions, OfACopysSourceHaveTheirOwnNames) {
    EXPECT_EQ(judged({{"if-match", "x"}}, "x-amz-copy-source-"), Verdict::Go);
    EXPECT_EQ(judged({{"x-amz-copy-source-if-match", "x"}}, "x-amz-copy-source-"), Verdict::Failed);
}

}  // namespace
}  // namespace s3server::test
