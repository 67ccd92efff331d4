#include <gmock/gmock.h>

#include <string>

#include "integration/S3Tool.hpp"
#include "support/servers/TestCertificate.hpp"

using namespace testsupport;
using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Optional;
using ::testing::StartsWith;

namespace {

// What the large file makes in parts of 5 MiB.
constexpr long partsOfLarge = 5;

const std::string bucket = EmbeddedTarget::bucketName;
const std::string address = "s3://" + bucket;

}  // namespace

/// Configured by a file in its folder alone.
class S3cmd : public S3Tool {
protected:
    explicit S3cmd(Way way = Way::HttpPath) : S3Tool("s3cmd", way) { configure(target.access().keys.secret); }

    void configure(const std::string& secret, const std::string& more = {}) {
        const auto access = target.access();
        const auto place = access.endpoint.substr(access.endpoint.find("://") + 3);
        writeFile("s3cmd.conf", "[default]\naccess_key = " + access.keys.access + "\nsecret_key = " + secret +
                                    "\nhost_base = " + place + "\nhost_bucket = " + place +
                                    "\nbucket_location = " + access.region +
                                    "\nuse_https = " + (access.caFile.empty() ? "False" : "True") +
                                    "\nca_certs_file = " + access.caFile +
                                    "\nmultipart_chunk_size_mb = 5\nmax_retries = 1\n" + more);
        leadingArguments = {"--config", "s3cmd.conf", "--no-progress"};
    }
};

TEST_F(S3cmd, MakesListsAndRemovesBuckets) {
    output({"mb", "s3://new-bucket"});
    EXPECT_THAT(output({"ls"}), HasSubstr("  s3://new-bucket\n"));
    EXPECT_THAT(output({"info", "s3://new-bucket"}), HasSubstr("Location:  eu-west-3\n"));
    output({"rb", "s3://new-bucket"});
    EXPECT_THAT(output({"ls"}), Not(HasSubstr("new-bucket")));
}

TEST_F(S3cmd, PutsGetsListsAndDeletesFiles) {
    const std::string name = "a b+c%41&d=e#f-\xC3\xA4.txt";
    writeFile(name, "content");
    output({"put", name, address + "/folder/" + name});
    EXPECT_EQ(server.object(bucket, "folder/" + name), "content");
    EXPECT_THAT(output({"ls", address}), HasSubstr("DIR  " + address + "/folder/\n"));
    EXPECT_THAT(output({"ls", "--recursive", address}), HasSubstr(" 7  " + address + "/folder/" + name));
    output({"get", address + "/folder/" + name, "back"});
    EXPECT_EQ(readFile("back"), "content");
    output({"del", address + "/folder/" + name});
    EXPECT_THAT(server.keys(bucket), IsEmpty());
}

TEST_F(S3cmd, SynchronisesAFolderThereAndBack) {
    writeFile("source/one", "1");
    writeFile("source/deep/two", "22");
    output({"sync", "source/", address + "/copy/"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("copy/deep/two", "copy/one"));

    writeFile("source/one", "longer");
    std::filesystem::remove(folder / "source/deep/two");
    output({"sync", "--delete-removed", "source/", address + "/copy/"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("copy/one"));
    EXPECT_EQ(server.object(bucket, "copy/one"), "longer");

    server.forgetRequests();
    output({"sync", "--delete-removed", "source/", address + "/copy/"});
    EXPECT_EQ(requests("PutObject") + requests("DeleteObject") + requests("DeleteObjects"), 0);

    std::filesystem::create_directory(folder / "back");
    output({"sync", address + "/copy/", "back/"});
    EXPECT_EQ(readFile("back/one"), "longer");
}

TEST_F(S3cmd, CopiesAndMovesObjectsOnTheServer) {
    server.putObject(bucket, "a b/c+d%", "content");
    output({"cp", address + "/a b/c+d%", address + "/copy+%"});
    output({"mv", address + "/copy+%", address + "/moved"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("a b/c+d%", "moved"));
    EXPECT_EQ(server.object(bucket, "moved"), "content");
    EXPECT_EQ(requests("CopyObject"), 2);
}

TEST_F(S3cmd, TellsOfABucketThatNobodyConfigured) {
    const auto told = output({"info", address});
    EXPECT_THAT(told, HasSubstr("Payer:     BucketOwner\n"));
    EXPECT_THAT(told, ContainsRegex("Expiration [Rr]ule: none\n"));
    EXPECT_THAT(told, HasSubstr("Policy:    none\n"));
    EXPECT_THAT(told, HasSubstr("CORS:      none\n"));
    EXPECT_THAT(told, HasSubstr("ACL:       s3server: FULL_CONTROL\n"));
    EXPECT_EQ(server.requestCounts().count({"", 501}), 0u) << "everything it asks for is known";
}

TEST_F(S3cmd, TellsOfAnObject) {
    server.putObject(bucket, "key", "content");
    const auto told = output({"info", address + "/key"});
    EXPECT_THAT(told, HasSubstr("File size: 7\n"));
    EXPECT_THAT(told, HasSubstr("MD5 sum:   9a0364b9e99bb480dd25e1f0284c8555\n"));
    EXPECT_THAT(told, HasSubstr("ACL:       s3server: FULL_CONTROL\n"));
}

TEST_F(S3cmd, DeletesWhatIsBelowAPrefixAndABucketWithAllItHolds) {
    for (const char* const key : {"a/1", "a/2", "b/3", "top"})
        server.putObject(bucket, key, "x");
    output({"del", "--recursive", "--force", address + "/a/"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("b/3", "top"));
    expectRefusal({"rb", address}, "BucketNotEmpty");
    output({"rb", "--recursive", "--force", address});
    EXPECT_THAT(output({"ls"}), IsEmpty());
}

TEST_F(S3cmd, SignsWithVersion4AndIsRefusedWithAWrongKey) {
    output({"ls", address});
    for (const auto& request : server.requests())
        EXPECT_THAT(request.header("authorization"), Optional(StartsWith("AWS4-HMAC-SHA256 ")));
    configure("wrong");
    expectRefusal({"ls", address}, "SignatureDoesNotMatch");
}

TEST_F(S3cmd, IsToldWhatIsMissing) {
    expectRefusal({"ls", "s3://missing-bucket"}, "NoSuchBucket");
    expectRefusal({"get", address + "/missing", "back"}, "missing");
    EXPECT_FALSE(std::filesystem::exists(folder / "back"));
}

/// What depends on the connection.
class S3cmdOverEveryConnection : public S3cmd, public ::testing::WithParamInterface<Way> {
protected:
    S3cmdOverEveryConnection() : S3cmd(GetParam()) {}
};

TEST_P(S3cmdOverEveryConnection, CopiesALargeFileInPartsThereAndBack) {
    const auto content = largeContent();
    writeFile("large", content);
    output({"put", "large", address + "/large"});
    EXPECT_TRUE(server.object(bucket, "large") == content);
    EXPECT_EQ(requests("UploadPart"), partsOfLarge);
    EXPECT_EQ(server.openUploads(bucket), 0u);
    output({"get", address + "/large", "back"});
    EXPECT_TRUE(readFile("back") == content);
}

INSTANTIATE_TEST_SUITE_P(EmbeddedServer, S3cmdOverEveryConnection,
                         ::testing::Values(Way::HttpPath, Way::HttpsPath),
                         [](const auto& way) { return nameOf(way.param); });

/// An embedded server over TLS.
class S3cmdOverTls : public S3cmd {
protected:
    S3cmdOverTls() : S3cmd(Way::HttpsPath) {}
};

TEST_F(S3cmdOverTls, WantsACertificateItTrusts) {
    const TestAuthority stranger;
    leadingArguments.insert(leadingArguments.end(), {"--ca-certs", stranger.caFile()});
    expectRefusal({"ls"}, "certificate");
    EXPECT_THAT(server.requests(), IsEmpty());
}
