// Writes and rewrites a large file in parts on an S3 server in this process, with the plug-in's cloud client
// itself: the host's providers don't offer parts, their makers do so below the providers. Exit status 0 when
// all checks pass.

#include <aws/core/Aws.h>

#include <iostream>

#include "AwsS3ClientFactory.hpp"
#include "Files.hpp"
#include "PartSteps.hpp"
#include "Report.hpp"
#include "S3CloudClient.hpp"
#include "ServedBucket.hpp"

namespace {

storage::s3provider::S3CloudClient cloudClient(const s3server::Server& server) {
    auto configuration = storage::s3provider::makeClientConfiguration();
    configuration.endpointOverride = "http://" + server.endpoint();
    return {demo::bucketName, storage::s3provider::makeS3Client(configuration),
            storage::s3provider::getRetrySettings(), demo::region};
}

bool writeInParts(s3server::Server& server) {
    demo::Report report(server);
    auto bucket = cloudClient(server);
    const auto large = demo::largeFile();
    const std::string key = large.relative_path().string();
    uploadInParts(bucket, report, key, demo::readFile(large));
    rewriteInParts(bucket, report, key, demo::readFile(large));
    abandonUpload(bucket, report, server, demo::bucketName);
    return report.verdict();
}

}  // namespace

int main() {
    try {
        demo::ServedBucket served;
        const Aws::SDKOptions sdk;
        Aws::InitAPI(sdk);
        const bool good = writeInParts(served.server);
        Aws::ShutdownAPI(sdk);
        return good ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << "demo: " << failure.what() << "\n";
        return 1;
    }
}
