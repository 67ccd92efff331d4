// Opens a bucket by its IRI, as a host does, through the plug-in's bundle, on an S3 server in this process;
// moves files of this machine into it and back, and compares every byte. Exit status 0 when all checks pass.

#include <cstdlib>
#include <iostream>
#include <s3server/Server.hpp>

#include "AwsS3ClientFactory.hpp"
#include "FileSteps.hpp"
#include "Files.hpp"
#include "PartSteps.hpp"
#include "Report.hpp"
#include "S3CloudClient.hpp"
#include "ServiceFramework.hpp"

namespace {

using foundation::storage::provider::IProvider;
using foundation::storage::provider::StorageIRI;

constexpr const char* bucketName = "demo";
constexpr const char* region = "eu-west-3";

/// What a user would set. Before the first thread that reads it.
void setEnvironment(const s3server::Server& server) {
    const auto& keys = s3server::defaultCredentials;
    const std::pair<const char*, std::string> variables[] = {
        {"ZR_AWS_ENDPOINT_OVERRIDE", "http://" + server.endpoint()},
        {"ZR_AWS_PROXY", "OFF"},
        {"AWS_DEFAULT_REGION", region},
        {"AWS_EC2_METADATA_DISABLED", "true"},
        {"AWS_ACCESS_KEY_ID", keys.accessKey},
        {"AWS_SECRET_ACCESS_KEY", keys.secretKey},
        {"AWS_SESSION_TOKEN", ""},
    };
    for (const auto& [name, value] : variables)
        ::setenv(name, value.c_str(), 1);  // NOLINT(concurrency-mt-unsafe): see above
}

storage::s3provider::S3CloudClient cloudClient(const s3server::Server& server) {
    auto configuration = storage::s3provider::makeClientConfiguration();
    configuration.endpointOverride = "http://" + server.endpoint();
    return {bucketName, storage::s3provider::makeS3Client(configuration),
            storage::s3provider::getRetrySettings(), region};
}

bool use(IProvider& bucket, s3server::Server& server) {
    demo::Report report(server);

    const auto files = demo::filesBelow("/usr/include", 300);
    const auto large = demo::fileOfAtLeast(
        2 * demo::partSize + 1,
        {"/usr/bin", "/usr/lib/gcc/x86_64-linux-gnu/12", "/usr/lib/gcc/aarch64-linux-gnu/12", "/usr/lib"});
    fillBucket(bucket, report, files);
    lookAround(bucket, report, files);
    readBack(bucket, report, files);
    auto client = cloudClient(server);
    const std::string key = large.relative_path().string();
    uploadInParts(client, report, key, demo::readFile(large));
    readRange(bucket, report, large);
    rewriteInParts(client, report, key, demo::readFile(large));
    abandonUpload(client, report, server, bucketName);
    removeEverything(bucket, report);
    return report.verdict();
}

int fail(const std::exception& failure) {
    std::cerr << "demo: " << failure.what() << "\n";
    return 1;
}

int openOn(s3server::Server& server) {
    // Ends after the handler below: what that is given may be the bundle's.
    s3vfs::ServiceFramework framework;
    try {
        const auto bundle = framework.bundle();
        std::cout << "The bundle " << bundle.GetSymbolicName() << " is " << bundle.GetLocation() << ".\n";
        const auto bucket = framework.providerFactory()->createProvider(StorageIRI(u"s3://demo/"));
        return use(*bucket, server) ? 0 : 1;
    } catch (const std::exception& failure) {
        return fail(failure);
    }
}

}  // namespace

int main() {
    try {
        s3server::Server server;
        server.createBucket(bucketName, region);
        setEnvironment(server);
        std::cout << "An S3 server listens on " << server.endpoint() << " with bucket '" << bucketName
                  << "' in " << region << ".\n";
        return openOn(server);
    } catch (const std::exception& failure) {
        return fail(failure);
    }
}
