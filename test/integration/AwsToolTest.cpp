#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <string>

#include "integration/S3Tool.hpp"
#include "s3server/Client.hpp"

using namespace testsupport;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;
// The tool's parts, and what it doesn't split, have 8 MiB.
constexpr long partsOfLarge = 3;

const std::string bucket = EmbeddedTarget::bucketName;

}  // namespace

/// Amazon's own.
class AwsTool : public S3Tool {
protected:
    explicit AwsTool(Way way = Way::HttpPath) : S3Tool("aws", way) {
        const auto access = target.access();
        environment.insert({{"AWS_CONFIG_FILE", "/nonexistent"},
                            {"AWS_SHARED_CREDENTIALS_FILE", "/nonexistent"},
                            {"AWS_EC2_METADATA_DISABLED", "true"},
                            {"AWS_MAX_ATTEMPTS", "1"},
                            {"AWS_ACCESS_KEY_ID", access.keys.access},
                            {"AWS_SECRET_ACCESS_KEY", access.keys.secret},
                            {"AWS_DEFAULT_REGION", access.region}});
        if (!access.caFile.empty()) environment["AWS_CA_BUNDLE"] = access.caFile;
        leadingArguments = {"--endpoint-url", access.endpoint};
    }

    nlohmann::json document(const std::vector<std::string>& arguments) const {
        return nlohmann::json::parse(output(arguments));
    }
};

TEST_F(AwsTool, MakesListsAndRemovesBuckets) {
    EXPECT_THAT(output({"s3", "mb", "s3://new-bucket"}), HasSubstr("make_bucket: new-bucket"));
    EXPECT_THAT(output({"s3", "ls"}), HasSubstr(" new-bucket\n"));
    EXPECT_EQ(document({"s3api", "get-bucket-location", "--bucket", "new-bucket"})["LocationConstraint"],
              "eu-west-3");
    output({"s3", "rb", "s3://new-bucket"});
    EXPECT_THAT(output({"s3", "ls"}), Not(HasSubstr("new-bucket")));
}

TEST_F(AwsTool, RemovesABucketWithAllItHolds) {
    server.putObject(bucket, "one", "1");
    server.putObject(bucket, "folder/two", "2");
    expectRefusal({"s3", "rb", "s3://" + bucket}, "BucketNotEmpty");
    output({"s3", "rb", "--force", "s3://" + bucket});
    expectRefusal({"s3", "ls", "s3://" + bucket}, "NoSuchBucket");
}

TEST_F(AwsTool, CopiesFilesThereAndBack) {
    const std::vector<std::string> names = {"a b+c%41&d=e#f.txt", "deep/er/file", "empty",
                                            "umlaut-\xC3\xA4.txt"};
    const auto contentOf = [](const std::string& name) {
        return name == "empty" ? "" : "content of " + name;
    };
    for (const auto& name : names)
        writeFile("source/" + name, contentOf(name));
    output({"s3", "cp", "--recursive", "source", "s3://" + bucket + "/folder"});
    output({"s3", "cp", "--recursive", "s3://" + bucket + "/folder", "back"});
    EXPECT_EQ(server.keys(bucket).size(), names.size());
    for (const auto& name : names) {
        EXPECT_EQ(server.object(bucket, "folder/" + name), contentOf(name));
        EXPECT_EQ(readFile("back/" + name), contentOf(name)) << name;
    }
}

TEST_F(AwsTool, PrintsAnObject) {
    server.putObject(bucket, "key", "first line\nsecond line\n");
    EXPECT_EQ(output({"s3", "cp", "s3://" + bucket + "/key", "-"}), "first line\nsecond line\n");
}

TEST_F(AwsTool, ListsFoldersAndObjects) {
    for (const char* key : {"a/1", "a/2", "b/3", "top"})
        server.putObject(bucket, key, "1234567");
    const auto listing = output({"s3", "ls", "s3://" + bucket});
    EXPECT_THAT(listing, HasSubstr("PRE a/\n"));
    EXPECT_THAT(listing, HasSubstr("PRE b/\n"));
    EXPECT_THAT(listing, HasSubstr(" 7 top\n"));
    EXPECT_THAT(output({"s3", "ls", "--recursive", "--summarize", "s3://" + bucket + "/a/"}),
                HasSubstr("Total Objects: 2\n   Total Size: 14"));
}

TEST_F(AwsTool, ListsPageByPage) {
    for (int i = 0; i < 250; ++i)
        server.putObject(bucket, "page/" + std::to_string(i) + " +%", "x");
    EXPECT_THAT(output({"s3", "ls", "--recursive", "--summarize", "--page-size", "100", "s3://" + bucket}),
                HasSubstr("Total Objects: 250\n"));
    EXPECT_EQ(requests("ListObjectsV2"), 3);
    EXPECT_EQ(
        document({"s3api", "list-objects", "--page-size", "100", "--bucket", bucket})["Contents"].size(),
        250u);
}

TEST_F(AwsTool, SynchronisesFolders) {
    writeFile("source/one", "1");
    writeFile("source/deep/two", "22");
    const auto everything = "s3://" + bucket + "/copy";
    output({"s3", "sync", "source", everything});
    EXPECT_THAT(server.keys(bucket), ElementsAre("copy/deep/two", "copy/one"));

    writeFile("source/one", "longer");
    std::filesystem::remove(folder / "source/deep/two");
    writeFile("source/three", "3");
    server.forgetRequests();
    output({"s3", "sync", "--delete", "source", everything});
    EXPECT_THAT(server.keys(bucket), ElementsAre("copy/one", "copy/three"));
    EXPECT_EQ(server.object(bucket, "copy/one"), "longer");

    server.forgetRequests();
    output({"s3", "sync", "--delete", "source", everything});
    EXPECT_EQ(requests("PutObject") + requests("DeleteObject"), 0);

    output({"s3", "sync", everything, "fetched"});
    EXPECT_EQ(readFile("fetched/one"), "longer");
    EXPECT_EQ(readFile("fetched/three"), "3");
}

TEST_F(AwsTool, SynchronisesBuckets) {
    server.createBucket("second", "eu-west-3");
    server.putObject(bucket, "a b/c+d%", "content");
    output({"s3", "sync", "s3://" + bucket, "s3://second"});
    EXPECT_EQ(server.object("second", "a b/c+d%"), "content");
    EXPECT_EQ(requests("CopyObject"), 1);
}

TEST_F(AwsTool, MovesFilesAndObjects) {
    writeFile("file", "content");
    output({"s3", "mv", "file", "s3://" + bucket + "/here"});
    EXPECT_FALSE(std::filesystem::exists(folder / "file"));
    output({"s3", "mv", "s3://" + bucket + "/here", "s3://" + bucket + "/there+1%"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("there+1%"));
    output({"s3", "mv", "s3://" + bucket + "/there+1%", "back"});
    EXPECT_EQ(readFile("back"), "content");
    EXPECT_THAT(server.keys(bucket), IsEmpty());
}

TEST_F(AwsTool, MovesALargeObjectInParts) {
    const auto content = largeContent();
    server.putObject(bucket, "here", content);
    output({"s3", "mv", "s3://" + bucket + "/here", "s3://" + bucket + "/there"});
    EXPECT_TRUE(server.object(bucket, "there") == content);
    EXPECT_EQ(requests("UploadPartCopy"), partsOfLarge);
    EXPECT_THAT(server.keys(bucket), ElementsAre("there"));
}

TEST_F(AwsTool, RemovesOneObjectOrAllBelowAPrefix) {
    for (const char* key : {"a/1", "a/2", "b/3", "top"})
        server.putObject(bucket, key, "x");
    output({"s3", "rm", "s3://" + bucket + "/top"});
    output({"s3", "rm", "--recursive", "s3://" + bucket + "/a/"});
    EXPECT_THAT(server.keys(bucket), ElementsAre("b/3"));
    output({"s3", "rm", "s3://" + bucket + "/missing"});
    const auto several = R"({"Objects": [{"Key": "b/3"}, {"Key": "missing"}]})";
    EXPECT_EQ(
        document({"s3api", "delete-objects", "--bucket", bucket, "--delete", several})["Deleted"].size(), 2u);
    EXPECT_THAT(server.keys(bucket), IsEmpty());
}

TEST_F(AwsTool, ShowsOpenUploadsAndTheirParts) {
    writeFile("part-1", std::string(5 * mebibyte, 'a'));
    writeFile("part-2", "end");
    const auto with = [&](std::vector<std::string> words, const std::vector<std::string>& more) {
        words.insert(words.begin(), "s3api");
        words.insert(words.end(), {"--bucket", bucket});
        words.insert(words.end(), more.begin(), more.end());
        return words;
    };
    const std::string key = "large \xC3\xA4+%";
    const std::string id = document(with({"create-multipart-upload"}, {"--key", key}))["UploadId"];
    const std::vector<std::string> upload = {"--key", key, "--upload-id", id};

    const auto uploads = document(with({"list-multipart-uploads"}, {}))["Uploads"];
    ASSERT_EQ(uploads.size(), 1u);
    EXPECT_EQ(uploads[0]["Key"], key);
    EXPECT_EQ(uploads[0]["UploadId"], id);

    const auto first = document(with({"upload-part", "--part-number", "1", "--body", "part-1"}, upload));
    const auto second = document(with({"upload-part", "--part-number", "2", "--body", "part-2"}, upload));
    const auto parts = document(with({"list-parts"}, upload))["Parts"];
    ASSERT_EQ(parts.size(), 2u);
    EXPECT_EQ(parts[0]["PartNumber"], 1);
    EXPECT_EQ(parts[0]["Size"], 5 * mebibyte);
    EXPECT_EQ(parts[0]["ETag"], first["ETag"]);
    EXPECT_EQ(parts[1]["ETag"], second["ETag"]);

    const nlohmann::json completion = {
        {"Parts",
         {{{"PartNumber", 1}, {"ETag", first["ETag"]}}, {{"PartNumber", 2}, {"ETag", second["ETag"]}}}}};
    output(with({"complete-multipart-upload", "--multipart-upload", completion.dump()}, upload));
    EXPECT_TRUE(server.object(bucket, key) == std::string(5 * mebibyte, 'a') + "end");
    EXPECT_EQ(server.openUploads(bucket), 0u);
    expectRefusal(with({"list-parts"}, upload), "NoSuchUpload");
}

TEST_F(AwsTool, AbortsAnUpload) {
    const std::vector<std::string> object = {"--bucket", bucket, "--key", "key"};
    const std::string id =
        document({"s3api", "create-multipart-upload", "--bucket", bucket, "--key", "key"})["UploadId"];
    output({"s3api", "abort-multipart-upload", "--bucket", bucket, "--key", "key", "--upload-id", id});
    EXPECT_EQ(server.openUploads(bucket), 0u);
}

TEST_F(AwsTool, KeepsWhatIsSaidOfAnObject) {
    writeFile("page", "<html/>");
    output({"s3", "cp", "page", "s3://" + bucket + "/page", "--content-type", "text/html", "--cache-control",
            "no-cache", "--metadata", "colour=blue"});
    const auto head = document({"s3api", "head-object", "--bucket", bucket, "--key", "page"});
    EXPECT_EQ(head["ContentType"], "text/html");
    EXPECT_EQ(head["CacheControl"], "no-cache");
    EXPECT_EQ(head["Metadata"]["colour"], "blue");
    EXPECT_EQ(head["ContentLength"], 7);
}

TEST_F(AwsTool, FindsABucketThatNobodyConfigured) {
    const std::pair<std::string, std::string> refused[] = {
        {"cors", "NoSuchCORSConfiguration"},
        {"encryption", "ServerSideEncryptionConfigurationNotFoundError"},
        {"lifecycle-configuration", "NoSuchLifecycleConfiguration"},
        {"policy", "NoSuchBucketPolicy"},
        {"tagging", "NoSuchTagSet"},
        {"website", "NoSuchWebsiteConfiguration"},
    };
    for (const auto& [subject, code] : refused)
        expectRefusal({"s3api", "get-bucket-" + subject, "--bucket", bucket}, '(' + code + ')');
    EXPECT_EQ(output({"s3api", "get-bucket-versioning", "--bucket", bucket}), "");
    EXPECT_EQ(output({"s3api", "get-bucket-logging", "--bucket", bucket}), "");
    const auto acl = document({"s3api", "get-bucket-acl", "--bucket", bucket});
    EXPECT_EQ(acl["Grants"][0]["Grantee"]["Type"], "CanonicalUser");
    EXPECT_EQ(acl["Grants"][0]["Permission"], "FULL_CONTROL");
}

TEST_F(AwsTool, ReadsRangesAndChangedObjectsOnly) {
    server.putObject(bucket, "key", "0123456789");
    const auto part =
        document({"s3api", "get-object", "--bucket", bucket, "--key", "key", "--range", "bytes=2-5", "part"});
    EXPECT_EQ(part["ContentRange"], "bytes 2-5/10");
    EXPECT_EQ(readFile("part"), "2345");
    const std::string etag = part["ETag"];
    expectRefusal(
        {"s3api", "get-object", "--bucket", bucket, "--key", "key", "--if-none-match", etag, "part"}, "304");
    expectRefusal(
        {"s3api", "get-object", "--bucket", bucket, "--key", "key", "--if-match", "\"other\"", "part"},
        "PreconditionFailed");
    expectRefusal({"s3api", "get-object", "--bucket", bucket, "--key", "key", "--range", "bytes=10-", "part"},
                  "InvalidRange");
}

TEST_F(AwsTool, PresignsAddressesThatAnybodyMayUse) {
    server.putObject(bucket, "a key+", "content");
    auto address = output({"s3", "presign", "s3://" + bucket + "/a key+", "--expires-in", "600"});
    address.pop_back();
    const auto endpoint = target.access().endpoint;
    ASSERT_EQ(address.rfind(endpoint, 0), 0u);
    s3server::test::Client client(endpoint);
    EXPECT_EQ(client.get(address.substr(endpoint.size())).body, "content");
    EXPECT_EQ(client.get(address.substr(endpoint.size()) + "0").status, 403);
}

TEST_F(AwsTool, IsRefusedWithWrongKeys) {
    server.putObject(bucket, "key", "content");
    environment["AWS_SECRET_ACCESS_KEY"] = "wrong";
    expectRefusal({"s3", "ls", "s3://" + bucket}, "SignatureDoesNotMatch");
    expectRefusal({"s3", "cp", "s3://" + bucket + "/key", "back"}, "403");
    environment["AWS_ACCESS_KEY_ID"] = "unknown";
    expectRefusal({"s3", "ls", "s3://" + bucket}, "InvalidAccessKeyId");
    expectRefusal({"--no-sign-request", "s3", "ls", "s3://" + bucket}, "AccessDenied");
    EXPECT_FALSE(std::filesystem::exists(folder / "back"));
}

TEST_F(AwsTool, IsToldWhatIsMissing) {
    expectRefusal({"s3", "ls", "s3://missing-bucket"}, "NoSuchBucket");
    writeFile("file", "content");
    expectRefusal({"s3", "cp", "file", "s3://missing-bucket/"}, "NoSuchBucket");
    expectRefusal({"s3", "cp", "s3://" + bucket + "/missing", "back"}, "404");
    expectRefusal({"s3api", "get-object", "--bucket", bucket, "--key", "missing", "back"}, "NoSuchKey");
    expectRefusal({"s3", "mb", "s3://" + bucket}, "BucketAlreadyOwnedByYou");
}

/// What depends on the connection.
class AwsToolOverEveryConnection : public AwsTool, public ::testing::WithParamInterface<Way> {
protected:
    AwsToolOverEveryConnection() : AwsTool(GetParam()) {}
};

TEST_P(AwsToolOverEveryConnection, CopiesALargeFileInPartsThereAndBack) {
    const auto content = largeContent();
    writeFile("large", content);
    output({"s3", "cp", "large", "s3://" + bucket + "/"});
    EXPECT_TRUE(server.object(bucket, "large") == content);
    EXPECT_EQ(requests("UploadPart"), partsOfLarge);
    EXPECT_EQ(server.openUploads(bucket), 0u);
    output({"s3", "cp", "s3://" + bucket + "/large", "back"});
    EXPECT_TRUE(readFile("back") == content);
    EXPECT_EQ(requests("GetObject"), partsOfLarge);
}

TEST_P(AwsToolOverEveryConnection, SendsChecksumsThatAreChecked) {
    writeFile("file", "content");
    const auto put = [](const std::vector<std::string>& more) {
        std::vector<std::string> words = {"s3api",  "put-object", "--bucket", bucket,
                                          "--body", "file",       "--key"};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    };
    for (const std::string algorithm : {"CRC32", "SHA256"}) {
        output(put({algorithm, "--checksum-algorithm", algorithm}));
        EXPECT_EQ(server.object(bucket, algorithm), "content");
    }
    expectRefusal(put({"bad", "--checksum-sha1", "AAAAAAAAAAAAAAAAAAAAAAAAAAA="}), "BadDigest");
    expectRefusal(put({"bad", "--content-md5", "AAAAAAAAAAAAAAAAAAAAAA=="}), "BadDigest");
    EXPECT_FALSE(server.object(bucket, "bad"));
}

INSTANTIATE_TEST_SUITE_P(EmbeddedServer, AwsToolOverEveryConnection,
                         ::testing::Values(Way::HttpPath, Way::HttpsPath),
                         [](const auto& way) { return nameOf(way.param); });

/// An embedded server over TLS.
class AwsToolOverTls : public AwsTool {
protected:
    AwsToolOverTls() : AwsTool(Way::HttpsPath) {}
};

TEST_F(AwsToolOverTls, WantsACertificateItTrusts) {
    environment.erase("AWS_CA_BUNDLE");
    expectRefusal({"s3", "ls"}, "SSL validation failed");
}
