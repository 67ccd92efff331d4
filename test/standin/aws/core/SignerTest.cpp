#include "core/Signer.hpp"

#include <gmock/gmock.h>

using namespace standin::aws;
using Aws::Auth::AWSCredentials;
using Aws::Utils::DateTime;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::Pair;

namespace {

const RequestTarget target = encodeTarget("/test.txt", "", {});

SigningContext at(const char* time, const std::string& region = "us-east-1") {
    return {
        "GET", target, region, "s3", "UNSIGNED-PAYLOAD", DateTime(time, Aws::Utils::DateFormat::ISO_8601)};
}

std::string signedBy(Signer& signer, const SigningContext& context, const AWSCredentials& credentials) {
    Headers headers{{"host", "h"}};
    signer.sign(headers, context, credentials);
    return headers["authorization"];
}

TEST(Signer, LeavesARequestAsItIsWithoutAccessKeyOrSecret) {
    Signer signer;
    for (const AWSCredentials& credentials :
         {AWSCredentials(), AWSCredentials("A", "", "T"), AWSCredentials("", "S", "T")}) {
        Headers headers{{"range", "bytes=0-9"}};
        signer.sign(headers, at("2013-05-24T00:00:00Z"), credentials);
        EXPECT_THAT(headers, ElementsAre(Pair("range", "bytes=0-9")));
    }
}

TEST(Signer, SendsAndSignsTheSessionToken) {
    Signer signer;
    Headers headers;
    signer.sign(headers, at("2013-05-24T00:00:00Z"), {"A", "S", " TOKEN\n"});
    EXPECT_EQ(headers["x-amz-security-token"], "TOKEN");
    EXPECT_THAT(headers["authorization"], HasSubstr(";x-amz-security-token,"));
}

TEST(Signer, SignsTheHostButNotTheUserAgent) {
    Signer signer;
    Headers headers{{"host", "h"}, {"user-agent", "u"}};
    signer.sign(headers, at("2013-05-24T00:00:00Z"), {"A", "S"});
    EXPECT_THAT(headers["authorization"], HasSubstr("SignedHeaders=host;"));
    EXPECT_THAT(headers["authorization"], Not(HasSubstr("user-agent")));
}

TEST(Signer, SignsAnewForAnotherDayRegionOrSecret) {
    Signer used;
    const SigningContext contexts[] = {at("2013-05-24T00:00:00Z"), at("2013-05-25T00:00:00Z"),
                                       at("2013-05-25T00:00:00Z", "eu-west-3")};
    const AWSCredentials credentials[] = {{"A", "S"}, {"A", "S2"}};
    for (const auto& context : contexts) {
        for (const auto& each : credentials) {
            Signer fresh;
            EXPECT_EQ(signedBy(used, context, each), signedBy(fresh, context, each));
        }
    }
}

TEST(Signer, GivesTheSameSignatureTheSecondTime) {
    Signer signer;
    const auto first = signedBy(signer, at("2013-05-24T00:00:00Z"), {"A", "S"});
    EXPECT_EQ(signedBy(signer, at("2013-05-24T00:00:00Z"), {"A", "S"}), first);
}

}  // namespace
