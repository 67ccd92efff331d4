#include "FailureText.hpp"

#include <gtest/gtest.h>

using namespace foundation::storage::provider;

TEST(FailureText, TellsTheCodeTheIriAndTheContextsOfAFailureToOpen) {
    Exception failure(ErrorCode::InvalidIRI, StorageIRI(u"s3:///f\u00FCr"));
    EXPECT_EQ(s3vfs::describe(failure), "The IRI can't be used (InvalidIRI): s3:///f\u00FCr");
    failure.addContext(ExceptionContext(u"no_bucket")).addContext(ExceptionContext(u"new\u001Best"));
    EXPECT_EQ(s3vfs::describe(failure),
              "The IRI can't be used (InvalidIRI): s3:///f\u00FCr, new\\x1best, no_bucket");
}

TEST(FailureText, NamesACodeItDoesNotKnowByItsNumber) {
    const Exception failure(static_cast<ErrorCode>(7), StorageIRI(u"s3://bucket/"));
    EXPECT_EQ(s3vfs::describe(failure), "The IRI can't be used (error 7): s3://bucket/");
}
