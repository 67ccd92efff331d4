#include <gmock/gmock.h>

#include <future>
#include <stdexcept>

#include "Client.hpp"
#include "s3server/Server.hpp"
#include "support/servers/TestCertificate.hpp"

namespace s3server::test {
namespace {

Options withTls(const testsupport::CertificateFiles& files) {
    Options options;
    options.checkSignatures = false;
    options.tls = TlsFiles{files.certificate, files.key};
    return options;
}

TEST(Tls, CarriesRequestsOfAnySize) {
    testsupport::TestAuthority authority;
    Server server(withTls(authority.issue({"127.0.0.1"})));
    server.createBucket("demo");
    Client client("https://" + server.endpoint());
    client.trust(authority.caFile());
    const std::string bytes(std::size_t{3} << 20U, 'x');
    EXPECT_EQ(client.put("/demo/k", bytes).status, 200);
    EXPECT_EQ(client.get("/demo/k").body, bytes);
    EXPECT_EQ(server.connections(), 1u);
}

TEST(Tls, IsNotSpokenByChance) {
    testsupport::TestAuthority authority;
    const Server server(withTls(authority.issue({"127.0.0.1"})));
    EXPECT_EQ(Client(server.endpoint()).get("/").status, 0);
}

TEST(Tls, DoesntKeepTheServerFromStopping) {
    testsupport::TestAuthority authority;
    Server server(withTls(authority.issue({"127.0.0.1"})));
    const RawConnection silent(server.port());
    Client client("https://" + server.endpoint());
    client.trust(authority.caFile());
    EXPECT_EQ(client.get("/").status, 200);
    server.stop();
    EXPECT_EQ(client.get("/").status, 0);
}

TEST(Tls, CutsABodyAsPlanned) {
    testsupport::TestAuthority authority;
    Server server(withTls(authority.issue({"127.0.0.1"})));
    server.createBucket("demo");
    server.putObject("demo", "k", "0123456789");
    server.plan(Fault::cutAfter(4));
    Client client("https://" + server.endpoint());
    client.trust(authority.caFile());
    const Answer answer = client.get("/demo/k");
    EXPECT_EQ(answer.body, "0123");
    EXPECT_NE(answer.failure, "");
}

TEST(Tls, NeedsFilesThatCanBeRead) {
    testsupport::TestAuthority authority;
    const auto files = authority.issue({"127.0.0.1"});
    EXPECT_THROW(Server(withTls({"/nowhere.pem", files.key})), std::runtime_error);
    EXPECT_THROW(Server(withTls({files.certificate, "/nowhere.pem"})), std::runtime_error);
    EXPECT_THROW(Server(withTls({files.certificate, authority.issue({"127.0.0.1"}).key})),
                 std::runtime_error);
}

}  // namespace
}  // namespace s3server::test
