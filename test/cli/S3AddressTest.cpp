#include "commands/S3Address.hpp"

#include <gtest/gtest.h>

#include "messages/UsageError.hpp"

using foundation::storage::provider::StorageIRI;

TEST(S3Address, BecomesAnIriThatNamesTheBucketLiterally) {
    for (const auto& [text, host] :
         {std::pair{"s3://My_Bucket/key", u"My_Bucket"},
          std::pair{"s3://user@bucket:80/key", u"user@bucket:80"},
          std::pair{"s3://100%25 b#?/key", u"100%25 b#?"}, std::pair{"s3://[::1]/key", u"[::1]"},
          std::pair{"s3://\u20AC", u"\u20AC"}}) {
        const StorageIRI iri = s3vfs::parseS3Address(text).bucketIri();
        EXPECT_EQ(iri.getHost(), host) << text;
        EXPECT_EQ(iri.getPath(), u"/") << text;
    }
}

TEST(S3Address, BecomesAPathThatHoldsTheKeyLiterally) {
    for (const auto& [text, path] :
         {std::pair{"s3://bucket", u"/"}, std::pair{"s3://bucket/", u"/"},
          std::pair{"s3://bucket//a", u"//a"}, std::pair{"s3://bucket/a/../b%2F?c#d", u"/a/../b%2F?c#d"},
          std::pair{"s3://bucket/\u20AC", u"/\u20AC"}})
        EXPECT_EQ(s3vfs::parseS3Address(text).path(), path) << text;
}

TEST(S3Address, IsUtf8) {
    for (const char* const text : {"s3://bucket/\xFF", "s3://b\xC3/key"})
        EXPECT_THROW(s3vfs::parseS3Address(text), s3vfs::UsageError);
}
