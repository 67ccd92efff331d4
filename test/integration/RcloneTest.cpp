#include <gmock/gmock.h>

#include <string>

#include "integration/S3Tool.hpp"
#include "s3server/Client.hpp"

using namespace testsupport;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Not;

namespace {

// What the large file makes in parts of 5 MiB.
constexpr long partsOfLarge = 5;

const std::string bucket = EmbeddedTarget::bucketName;
const std::string remote = "embedded:" + bucket;

}  // namespace

/// Its remote "embedded:" is the server; all of it comes from the environment, so that no file holds the
/// keys.
class Rclone : public S3Tool {
protected:
    explicit Rclone(Way way = Way::HttpPath) : S3Tool("rclone", way) {
        const auto access = target.access();
        writeFile("rclone.conf", "");
        environment.insert({{"RCLONE_CONFIG", folder / "rclone.conf"},
                            {"RCLONE_CACHE_DIR", folder / "cache"},
                            {"RCLONE_RETRIES", "1"},
                            {"RCLONE_LOW_LEVEL_RETRIES", "1"},
                            {"RCLONE_S3_UPLOAD_CUTOFF", "5Mi"},
                            {"RCLONE_S3_COPY_CUTOFF", "5Mi"},
                            {"RCLONE_S3_CHUNK_SIZE", "5Mi"},
                            {"RCLONE_CONFIG_EMBEDDED_TYPE", "s3"},
                            {"RCLONE_CONFIG_EMBEDDED_PROVIDER", "Other"},
                            {"RCLONE_CONFIG_EMBEDDED_ENDPOINT", access.endpoint},
                            {"RCLONE_CONFIG_EMBEDDED_REGION", access.region},
                            {"RCLONE_CONFIG_EMBEDDED_LOCATION_CONSTRAINT", access.region},
                            {"RCLONE_CONFIG_EMBEDDED_ACCESS_KEY_ID", access.keys.access},
                            {"RCLONE_CONFIG_EMBEDDED_SECRET_ACCESS_KEY", access.keys.secret}});
        if (!access.caFile.empty()) environment["RCLONE_CA_CERT"] = access.caFile;
    }
};

TEST_F(Rclone, MakesListsAndRemovesBuckets) {
    output({"mkdir", "embedded:new-bucket"});
    EXPECT_THAT(output({"lsd", "embedded:"}), HasSubstr(" new-bucket\n"));
    output({"rmdir", "embedded:new-bucket"});
    EXPECT_THAT(output({"lsd", "embedded:"}), Not(HasSubstr("new-bucket")));
}

TEST_F(Rclone, CopiesAFolderThereAndBackAndFindsTheCopiesEqual) {
    for (const char* const name : {"a b+c%41&d=e#f.txt", "deep/er/file", "umlaut-\xC3\xA4.txt"})
        writeFile(std::string("source/") + name, std::string("content of ") + name);
    writeFile("source/empty", "");
    output({"copy", "source", remote + "/folder"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("folder/a b+c%41&d=e#f.txt", "folder/deep/er/file",
                                                 "folder/empty", "folder/umlaut-\xC3\xA4.txt"));
    output({"check", "source", remote + "/folder"});
    output({"check", "--download", "source", remote + "/folder"});
    output({"copy", remote + "/folder", "back"});
    output({"check", "--download", "source", "back"});
    EXPECT_EQ(readFile("back/deep/er/file"), "content of deep/er/file");

    server.putObject(bucket, "folder/deep/er/file", "Content of deep/er/file");
    expectRefusal({"check", "--download", "source", remote + "/folder"}, "1 differences found");
}

TEST_F(Rclone, ListsFoldersAndObjects) {
    for (const char* const key : {"a/1", "a/2", "b/3", "top"})
        server.putObject(bucket, key, "1234567");
    EXPECT_EQ(output({"ls", remote + "/a"}), "        7 1\n        7 2\n");
    EXPECT_THAT(output({"lsl", remote + "/b"}), MatchesRegex(" +7 [0-9-]+ [0-9:.]+ 3\n"));
    EXPECT_EQ(output({"lsf", remote}), "a/\nb/\ntop\n");
    EXPECT_THAT(output({"size", remote}), HasSubstr("Total objects: 4"));
    EXPECT_EQ(output({"cat", "--offset", "2", "--count", "3", remote + "/top"}), "345");
}

TEST_F(Rclone, ListsPageByPage) {
    for (int i = 0; i < 250; ++i)
        server.putObject(bucket, "page/" + std::to_string(i) + " +%", "x");
    EXPECT_THAT(output({"size", "--s3-list-chunk", "100", remote}), HasSubstr("Total objects: 250"));
    EXPECT_EQ(requests("ListObjectsV2") + requests("ListObjects"), 3);
}

TEST_F(Rclone, SynchronisesAFolder) {
    writeFile("source/one", "1");
    writeFile("source/deep/two", "22");
    output({"sync", "source", remote + "/copy"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("copy/deep/two", "copy/one"));

    writeFile("source/one", "longer");
    std::filesystem::remove(folder / "source/deep/two");
    writeFile("source/three", "3");
    output({"sync", "source", remote + "/copy"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("copy/one", "copy/three"));
    EXPECT_EQ(server.object(bucket, "copy/one"), "longer");

    server.forgetRequests();
    output({"sync", "source", remote + "/copy"});
    EXPECT_EQ(requests("PutObject") + requests("DeleteObject") + requests("DeleteObjects"), 0);
}

TEST_F(Rclone, CopiesAndMovesObjectsOnTheServer) {
    server.putObject(bucket, "a b/c+d%", "content");
    const auto large = largeContent();
    server.putObject(bucket, "large", large);
    output({"copyto", remote + "/a b/c+d%", remote + "/copy+%"});
    output({"moveto", remote + "/large", remote + "/moved"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("a b/c+d%", "copy+%", "moved"));
    EXPECT_EQ(server.object(bucket, "copy+%"), "content");
    EXPECT_TRUE(server.object(bucket, "moved") == large);
    EXPECT_EQ(requests("UploadPartCopy"), partsOfLarge);
    EXPECT_EQ(requests("GetObject"), 0);
}

TEST_F(Rclone, DeletesWhatIsBelowAPrefixAndPurgesABucketWithoutAnError) {
    for (const char* const key : {"a/1", "a/2", "b/3", "top"})
        server.putObject(bucket, key, "x");
    output({"delete", remote + "/a"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("b/3", "top"));
    output({"deletefile", remote + "/top"});
    output({"purge", remote});
    EXPECT_THAT(output({"lsd", "embedded:"}), IsEmpty());
}

TEST_F(Rclone, FindsABucketWithoutVersionsAndUploadsUnderWay) {
    EXPECT_EQ(output({"backend", "versioning", remote}), "Unversioned\n");
    output({"cleanup", remote});
}

TEST_F(Rclone, MakesALinkThatAnybodyMayFollow) {
    server.putObject(bucket, "a key+", "content");
    auto address = output({"link", "--expire", "10m", remote + "/a key+"});
    address.pop_back();
    const auto endpoint = target.access().endpoint;
    ASSERT_EQ(address.rfind(endpoint, 0), 0u);
    EXPECT_EQ(s3server::test::Client(endpoint).get(address.substr(endpoint.size())).body, "content");
}

TEST_F(Rclone, IsRefusedWithAWrongKey) {
    server.putObject(bucket, "key", "content");
    environment["RCLONE_CONFIG_EMBEDDED_SECRET_ACCESS_KEY"] = "wrong";
    expectRefusal({"ls", remote}, "SignatureDoesNotMatch");
    expectRefusal({"copyto", remote + "/key", "back"}, "403");
    EXPECT_FALSE(std::filesystem::exists(folder / "back"));
}

TEST_F(Rclone, SaysThatTheServerIsFull) {
    server.plan(s3server::Fault::status(507, "InsufficientStorage").on("PutObject"));
    writeFile("source/file", "content");
    expectRefusal({"copy", "source", remote}, "InsufficientStorage");
    EXPECT_THAT(server.keys(bucket), IsEmpty());
}

/// What depends on the connection.
class RcloneOverEveryConnection : public Rclone, public ::testing::WithParamInterface<Way> {
protected:
    RcloneOverEveryConnection() : Rclone(GetParam()) {}
};

TEST_P(RcloneOverEveryConnection, CopiesALargeFileInPartsThereAndBack) {
    const auto content = largeContent();
    writeFile("source/large", content);
    output({"copy", "source", remote});
    EXPECT_TRUE(server.object(bucket, "large") == content);
    EXPECT_EQ(requests("UploadPart"), partsOfLarge);
    EXPECT_EQ(server.openUploads(bucket), 0u);
    output({"copy", remote, "back"});
    EXPECT_TRUE(readFile("back/large") == content);
}

INSTANTIATE_TEST_SUITE_P(EmbeddedServer, RcloneOverEveryConnection,
                         ::testing::Values(Way::HttpPath, Way::HttpsPath),
                         [](const auto& way) { return nameOf(way.param); });

/// An embedded server over TLS.
class RcloneOverTls : public Rclone {
protected:
    RcloneOverTls() : Rclone(Way::HttpsPath) {}
};

TEST_F(RcloneOverTls, WantsACertificateItTrusts) {
    environment.erase("RCLONE_CA_CERT");
    expectRefusal({"lsd", "embedded:"}, "certificate");
}
