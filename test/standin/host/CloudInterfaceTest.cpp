#include <gtest/gtest.h>
#include <storage/cloudprovider/CloudClient.hpp>

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace {

using storage::cloudprovider::CloudClient;

// The Itanium C++ ABI stores a pointer to a virtual member function as 1 plus its offset in the table.
template <class Member>
std::size_t slotOf(Member member) {
    std::size_t encoded = 0;
    static_assert(sizeof member >= sizeof encoded);
    std::memcpy(&encoded, &member, sizeof encoded);
    return (encoded - 1) / sizeof(void*);
}

TEST(CloudClient, KeepsTheOrderOfItsOperations) {
    EXPECT_EQ(slotOf(&CloudClient::stat), 0U);
    EXPECT_EQ(slotOf(&CloudClient::checkRootValidity), 1U);
    EXPECT_EQ(slotOf(&CloudClient::list), 2U);
    EXPECT_EQ(slotOf(&CloudClient::remove), 3U);
    EXPECT_EQ(slotOf(&CloudClient::download), 4U);
    EXPECT_EQ(slotOf(&CloudClient::upload), 5U);
    EXPECT_EQ(slotOf(&CloudClient::listParts), 6U);
    EXPECT_EQ(slotOf(&CloudClient::startMultipartUpload), 7U);
    EXPECT_EQ(slotOf(&CloudClient::uploadPart), 8U);
    EXPECT_EQ(slotOf(&CloudClient::reusePart), 9U);
    EXPECT_EQ(slotOf(&CloudClient::abortMultipartUpload), 10U);
    EXPECT_EQ(slotOf(&CloudClient::completeMultipartUpload), 11U);
}

TEST(CloudClient, IsAPureInterfaceWithoutState) {
    EXPECT_TRUE(std::is_abstract_v<CloudClient>);
    EXPECT_TRUE(std::has_virtual_destructor_v<CloudClient>);
    EXPECT_EQ(sizeof(CloudClient), sizeof(void*));
}

}  // namespace
