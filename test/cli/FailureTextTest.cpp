#include "messages/FailureText.hpp"

#include <gtest/gtest.h>

#include "support/process/Environment.hpp"

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

TEST(FailureText, TellsWhichVariableIsNoText) {
    const fl::i18n::conversion_error failure("ill-formed UTF-8 at byte 0 of 1");
    testsupport::Environment environment{{"AWS_SHARED_CREDENTIALS_FILE", "\xFF"}, {"HOME", "\xFF"}};
    EXPECT_EQ(s3vfs::describe(failure),
              "the value of AWS_SHARED_CREDENTIALS_FILE isn't UTF-8: ill-formed UTF-8 at byte 0 of 1");
    environment.set("AWS_SHARED_CREDENTIALS_FILE", "");
    EXPECT_EQ(s3vfs::describe(failure), "the value of HOME isn't UTF-8: ill-formed UTF-8 at byte 0 of 1");
    environment.set("AWS_SHARED_CREDENTIALS_FILE", "credentials");
    EXPECT_EQ(s3vfs::describe(failure), "a path or a variable isn't UTF-8: ill-formed UTF-8 at byte 0 of 1");
}
