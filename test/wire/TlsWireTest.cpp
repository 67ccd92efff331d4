#include <gmock/gmock.h>

#include <sstream>

#include "DiagnosticRecord.hpp"
#include "support/plugin/CloudFailure.hpp"
#include "support/plugin/LogCapture.hpp"
#include "support/servers/ScriptedServer.hpp"
#include "wire/WireTable.hpp"

using namespace testsupport;
using storage::cloudprovider::UnknownErrorException;
using storage::s3provider::S3CloudClient;
using ::testing::Contains;
using ::testing::HasSubstr;

namespace {

enum class Trust { ByFile, ByFolder };

/// A server with a certificate of `authority`, and a client that trusts whom the test says.
class CloudClientOverTls : public ::testing::Test {
protected:
    static Aws::Client::ClientConfiguration to(const ScriptedServer& server) {
        auto configuration = plainConfiguration(server.endpoint());
        configuration.scheme = Aws::Http::Scheme::HTTPS;
        configuration.verifySSL = true;
        configuration.requestTimeoutMs = 60000;
        configuration.connectTimeoutMs = 60000;
        return configuration;
    }

    static void trust(const TestAuthority& authority, Trust how,
                      Aws::Client::ClientConfiguration& configuration) {
        if (how == Trust::ByFile) {
            configuration.caFile = authority.caFile().string();
        } else {
            configuration.caPath = authority.caFolder().string();
        }
    }

    static std::string get(S3CloudClient& client) {
        std::ostringstream out;
        client.download("k", out, 0, 0);
        return out.str();
    }

    ScriptedServer::Options certified(const std::string& name, Validity validity = Validity::Current) {
        return {authority.issue({name}, validity), true};
    }

    static S3CloudClient clientOf(const Aws::Client::ClientConfiguration& configuration) {
        return {"b", sdkClient(configuration), {1, 0}, "eu-west-3"};
    }

    TestAuthority authority;
    TestAuthority otherAuthority;
};

struct Refused {
    const char* name;
    const char* certified;
    Validity validity;
    bool trustsAnother;
    Trust how;
};

void PrintTo(const Refused& refused, std::ostream* out) {
    *out << refused.name;
}

class RefusedCertificate : public CloudClientOverTls, public ::testing::WithParamInterface<Refused> {};

}  // namespace

TEST_F(CloudClientOverTls, TrustsAFileOrAFolderOfAuthorities) {
    for (const Trust how : {Trust::ByFile, Trust::ByFolder}) {
        ScriptedServer server({{Step::send(httpReply(200, {}, "content"))}}, certified("127.0.0.1"));
        auto configuration = to(server);
        trust(authority, how, configuration);
        auto client = clientOf(configuration);
        EXPECT_EQ(get(client), "content");
        EXPECT_TRUE(server.requests().at(0).tls);
    }
}

TEST_P(RefusedCertificate, EndsTheCallBeforeAByteIsSent) {
    const Refused& refused = GetParam();
    ScriptedServer server({}, certified(refused.certified, refused.validity));
    auto configuration = to(server);
    trust(refused.trustsAnother ? otherAuthority : authority, refused.how, configuration);
    const LogCapture log(clientChannel, storage::s3provider::LogFailedRequests);
    {
        auto client = clientOf(configuration);
        std::istringstream in("content");
        expectFailure<UnknownErrorException>(noIdentifier, [&] { get(client); });
        expectFailure<UnknownErrorException>(noIdentifier, [&] { client.upload("k", in, 7); });
    }
    EXPECT_TRUE(server.waitForConnectionsToEnd());
    EXPECT_GE(server.connections(), 2u);
    EXPECT_EQ(server.bytesReceived(), 0u);
    EXPECT_EQ(log.texts().size(), 2u);
    EXPECT_THAT(log.texts(), ::testing::Each(HasSubstr("Error message: curlCode: 60, ")));
}

INSTANTIATE_TEST_SUITE_P(
    Tls, RefusedCertificate,
    ::testing::Values(Refused{"OfAnotherAuthority", "127.0.0.1", Validity::Current, true, Trust::ByFile},
                      Refused{"OfAnotherAuthorityInAFolder", "127.0.0.1", Validity::Current, true,
                              Trust::ByFolder},
                      Refused{"OfAnotherName", "localhost", Validity::Current, false, Trust::ByFile},
                      Refused{"OfAnotherAddress", "127.0.0.2", Validity::Current, false, Trust::ByFolder},
                      Refused{"Expired", "127.0.0.1", Validity::Expired, false, Trust::ByFile},
                      Refused{"ExpiredInAFolder", "127.0.0.1", Validity::Expired, false, Trust::ByFolder},
                      Refused{"NotValidYet", "127.0.0.1", Validity::NotYet, false, Trust::ByFile},
                      Refused{"NotValidYetInAFolder", "127.0.0.1", Validity::NotYet, false, Trust::ByFolder}),
    [](const auto& test) { return test.param.name; });

TEST_F(CloudClientOverTls, TakesAnyCertificateWithoutVerification) {
    ScriptedServer server({{Step::send(httpReply(200, {}, "content"))}},
                          certified("localhost", Validity::Expired));
    auto configuration = to(server);
    configuration.verifySSL = false;
    auto client = clientOf(configuration);
    EXPECT_EQ(get(client), "content");
}
