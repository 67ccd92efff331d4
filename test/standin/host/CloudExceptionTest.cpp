#include <gtest/gtest.h>
#include <storage/cloudprovider/CloudException.hpp>

#include <type_traits>

namespace {

using namespace storage::cloudprovider;
using foundation::storage::provider::ExceptionContext;

TEST(ExceptionContext, KeepsItsText) {
    const ExceptionContext context(u"no_such_\u00fc");
    EXPECT_EQ(context.text(), u"no_such_\u00fc");
}

TEST(ExceptionContext, IsEqualToOneOfTheSameText) {
    EXPECT_TRUE(ExceptionContext(u"bad_region") == ExceptionContext(u"bad_region"));
    EXPECT_TRUE(ExceptionContext(u"bad_region") != ExceptionContext(u"bad_Region"));
}

TEST(ExceptionContext, IsNotMadeFromTextUnasked) {
    EXPECT_FALSE((std::is_convertible_v<std::u16string, ExceptionContext>));
}

TEST(CloudException, GivesItsMessageAndContext) {
    const CloudException error("it broke", ExceptionContext(u"broken"));
    EXPECT_STREQ(error.what(), "it broke");
    EXPECT_EQ(error.context(), ExceptionContext(u"broken"));
}

TEST(CloudException, HasNoContextWhenNoneIsGiven) {
    EXPECT_FALSE(CloudException("it broke", std::nullopt).context().has_value());
}

TEST(CloudException, CopiesMessageAndContext) {
    const CloudException original("it broke", ExceptionContext(u"broken"));
    const CloudException copy(original);  // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_STREQ(copy.what(), "it broke");
    EXPECT_EQ(copy.context(), original.context());
}

template <class Exception>
struct Message;
template <>
struct Message<InvalidCredentialsException> {
    static constexpr auto text = "Invalid Cloud credentials";
};
template <>
struct Message<InvalidLocationException> {
    static constexpr auto text = "Invalid Cloud location";
};
template <>
struct Message<PermissionDeniedException> {
    static constexpr auto text = "Permission for the Cloud resource has been denied";
};
template <>
struct Message<ResourceNotFoundException> {
    static constexpr auto text = "Cloud Resource not found";
};
template <>
struct Message<UnknownErrorException> {
    static constexpr auto text = "Unknown error";
};

template <class Exception>
class CloudExceptionFamily : public testing::Test {};

using Family = testing::Types<InvalidCredentialsException, InvalidLocationException,
                              PermissionDeniedException, ResourceNotFoundException, UnknownErrorException>;
TYPED_TEST_SUITE(CloudExceptionFamily, Family, );

TYPED_TEST(CloudExceptionFamily, HasAFixedMessage) {
    EXPECT_STREQ(TypeParam(std::nullopt).what(), Message<TypeParam>::text);
}

TYPED_TEST(CloudExceptionFamily, PassesItsContextOn) {
    EXPECT_EQ(TypeParam(ExceptionContext(u"why")).context(), ExceptionContext(u"why"));
    EXPECT_EQ(TypeParam(std::nullopt).context(), std::nullopt);
}

TYPED_TEST(CloudExceptionFamily, AddsNoMember) {
    EXPECT_EQ(sizeof(TypeParam), sizeof(CloudException));
}

TYPED_TEST(CloudExceptionFamily, IsCaughtAsEveryBase) {
    EXPECT_THROW(throw TypeParam(std::nullopt), TypeParam);
    EXPECT_THROW(throw TypeParam(std::nullopt), CloudException);
    EXPECT_THROW(throw TypeParam(std::nullopt), std::runtime_error);
    EXPECT_THROW(throw TypeParam(std::nullopt), std::exception);
}

}  // namespace
