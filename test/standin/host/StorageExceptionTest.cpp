#include <foundation/storage/provider/Exception.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using foundation::storage::provider::ErrorCode;
using foundation::storage::provider::Exception;
using foundation::storage::provider::ExceptionContext;
using foundation::storage::provider::StorageIRI;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const StorageIRI iri(u"s3://user:secret@bucket/a");

TEST(StorageException, KeepsItsCodeAndItsIri) {
    const Exception error(ErrorCode::InvalidIRI, iri);
    EXPECT_EQ(static_cast<int>(error.errorCode()), 1);
    EXPECT_EQ(error.iri(), iri);
    EXPECT_TRUE(error.contexts().empty());
}

TEST(StorageException, PutsTheNewestContextFirst) {
    Exception error(ErrorCode::InvalidIRI, iri);
    error.addContext(ExceptionContext(u"first")).addContext(ExceptionContext(u"second"));
    EXPECT_THAT(error.contexts(), ElementsAre(ExceptionContext(u"second"), ExceptionContext(u"first")));
}

TEST(StorageException, IsThrownWithItsContexts) {
    try {
        throw Exception(ErrorCode::InvalidIRI, iri).addContext(ExceptionContext(u"no_bucket"));
    } catch (const std::exception& caught) {
        const auto& error = dynamic_cast<const Exception&>(caught);
        EXPECT_THAT(error.contexts(), ElementsAre(ExceptionContext(u"no_bucket")));
    }
}

TEST(StorageException, DoesNotShowTheIriInItsMessage) {
    const Exception error(ErrorCode::InvalidIRI, iri);
    EXPECT_STRNE(error.what(), "");
    EXPECT_THAT(error.what(), Not(HasSubstr("secret")));
}

}  // namespace
