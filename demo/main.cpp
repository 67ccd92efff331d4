// Moves files of this machine through the cloud client into an S3 server in this process and back, and
// compares every byte. Exit status 0 when all checks pass.

#include <aws/core/Aws.h>
#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/S3ClientConfiguration.h>
#include <aws/s3/S3EndpointProvider.h>

#include <algorithm>
#include <iostream>
#include <s3server/Server.hpp>
#include <sstream>
#include <storage/cloudprovider/CloudException.hpp>

#include "Files.hpp"
#include "Report.hpp"
#include "S3CloudClient.hpp"

namespace {

using storage::cloudprovider::CloudClient;
using storage::cloudprovider::EntryInfo;
using storage::cloudprovider::PartInfo;
namespace fs = std::filesystem;

constexpr const char* bucketName = "demo";
constexpr const char* region = "eu-west-3";
constexpr std::uint64_t partSize = std::uint64_t{5} * 1024 * 1024;

std::shared_ptr<Aws::S3::S3Client> connect(const s3server::Server& server) {
    Aws::Client::ClientConfiguration base;
    base.region = region;
    base.endpointOverride = server.endpoint();
    base.scheme = Aws::Http::Scheme::HTTP;
    const auto& keys = s3server::defaultCredentials;
    return std::make_shared<Aws::S3::S3Client>(
        std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>(keys.accessKey, keys.secretKey),
        std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(),
        Aws::S3::S3ClientConfiguration(base, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, true,
                                       Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET));
}

std::string keyOf(const fs::path& file) {
    return file.relative_path().string();
}

std::string download(CloudClient& bucket, const std::string& key, std::uint64_t start = 0,
                     std::uint64_t end = 0) {
    std::ostringstream out;
    bucket.download(key, out, start, end);
    return out.str();
}

void upload(CloudClient& bucket, const std::string& key, const std::string& content) {
    std::istringstream in(content);
    bucket.upload(key, in, content.size());
}

std::vector<EntryInfo> listAll(CloudClient& bucket, const std::string& prefix, const std::string& delimiter,
                               int pageSize) {
    std::vector<EntryInfo> all;
    std::string token;
    do {
        for (auto& entry : bucket.list(prefix, token, {delimiter, pageSize}))
            all.push_back(std::move(entry));
    } while (!token.empty());
    return all;
}

void fillBucket(CloudClient& bucket, demo::Report& report, const std::vector<fs::path>& files) {
    report.step("fill the bucket with " + std::to_string(files.size()) + " files of this machine");
    for (const auto& file : files)
        upload(bucket, keyOf(file), demo::readFile(file));
    report.wire();
}

void lookAround(CloudClient& bucket, demo::Report& report, const std::vector<fs::path>& files) {
    report.step("stat, and list page by page");
    bucket.checkRootValidity("/");
    const auto entry = bucket.stat(keyOf(files.front()));
    report.check(entry && static_cast<std::uintmax_t>(entry->size) == fs::file_size(files.front()),
                 "stat tells the size of " + files.front().string());
    report.check(!bucket.stat("no/such/file"), "stat finds nothing where nothing is");
    report.check(listAll(bucket, "", "", 50).size() == files.size(), "flat pages of 50 hold every file once");
    for (const auto& folder : listAll(bucket, "usr/include/", "/", 50)) {
        if (folder.name.back() == '/') report.say("folder " + folder.name);
    }
    report.wire();
}

void readBack(CloudClient& bucket, demo::Report& report, const std::vector<fs::path>& files) {
    report.step("download every file whole");
    const auto equal = std::count_if(files.begin(), files.end(), [&](const auto& file) {
        return download(bucket, keyOf(file)) == demo::readFile(file);
    });
    report.check(
        static_cast<std::size_t>(equal) == files.size(),
        std::to_string(equal) + " of " + std::to_string(files.size()) + " files came back byte for byte");
    report.wire();
}

// The caller writes the parts' tags down, as the host does, and completes the upload with them.
void uploadInParts(CloudClient& bucket, demo::Report& report, const std::string& key,
                   const std::string& content) {
    report.step("upload " + std::to_string(content.size()) + " bytes in parts");
    const auto uploadId = bucket.startMultipartUpload(key, "");
    std::vector<PartInfo> parts;
    for (std::uint64_t offset = 0; offset < content.size(); offset += partSize) {
        std::istringstream in(content.substr(offset, partSize));
        PartInfo part{parts.size(), offset, std::min<std::uint64_t>(partSize, content.size() - offset), ""};
        part.Tag = bucket.uploadPart(key, uploadId, part, in);
        parts.push_back(part);
    }
    bucket.completeMultipartUpload(key, uploadId, parts);
    report.check(download(bucket, key) == content, "the parts became the object, byte for byte");
    report.wire();
}

void readRange(CloudClient& bucket, demo::Report& report, const std::string& key,
               const std::string& content) {
    report.step("download 100000 bytes out of the middle");
    const std::uint64_t start = content.size() / 2;
    report.check(download(bucket, key, start, start + 99999) == content.substr(start, 100000),
                 "the range came byte for byte");
    report.wire();
}

void rewriteInParts(CloudClient& bucket, demo::Report& report, const std::string& key, std::string content) {
    report.step("rewrite the second part, reuse the others where they are");
    const std::string note = "changed by the demo";
    content.replace(partSize, note.size(), note);
    auto parts = bucket.listParts(key);
    const auto uploadId = bucket.startMultipartUpload(key, "");
    for (auto& part : parts) {
        if (part.Index == 1) {
            std::istringstream in(content.substr(part.Offset, part.Size));
            part.Tag = bucket.uploadPart(key, uploadId, part, in);
        } else {
            part.Tag = bucket.reusePart(key, uploadId, part);
        }
    }
    bucket.completeMultipartUpload(key, uploadId, parts);
    report.wire();
    report.check(download(bucket, key) == content, "only the second part changed");
}

void abandonUpload(CloudClient& bucket, demo::Report& report, s3server::Server& server) {
    report.step("start an upload and think better of it");
    const auto uploadId = bucket.startMultipartUpload("abandoned", "");
    bucket.abortMultipartUpload("abandoned", uploadId);
    report.check(server.openUploads(bucketName) == 0, "no upload is left open");
    report.wire();
}

void removeEverything(CloudClient& bucket, demo::Report& report) {
    report.step("remove everything");
    for (const auto& entry : listAll(bucket, "", "", 0))
        bucket.remove(entry.name);
    report.check(listAll(bucket, "", "", 0).empty(), "the bucket is empty");
    report.wire();
}

bool run() {
    s3server::Server server;
    server.createBucket(bucketName, region);
    std::cout << "An S3 server listens on " << server.endpoint() << " with bucket '" << bucketName << "' in "
              << region << ".\n";
    storage::s3provider::S3CloudClient bucket(bucketName, connect(server), {5, 1000}, region);
    demo::Report report(server);

    const auto files = demo::filesBelow("/usr/include", 300);
    const auto large = demo::fileOfAtLeast(
        2 * partSize + 1,
        {"/usr/bin", "/usr/lib/gcc/x86_64-linux-gnu/12", "/usr/lib/gcc/aarch64-linux-gnu/12", "/usr/lib"});
    fillBucket(bucket, report, files);
    lookAround(bucket, report, files);
    readBack(bucket, report, files);
    const auto content = demo::readFile(large);
    uploadInParts(bucket, report, keyOf(large), content);
    readRange(bucket, report, keyOf(large), content);
    rewriteInParts(bucket, report, keyOf(large), content);
    abandonUpload(bucket, report, server);
    removeEverything(bucket, report);
    return report.verdict();
}

}  // namespace

int main() {
    Aws::SDKOptions options;
    Aws::InitAPI(options);
    int status = 1;
    try {
        status = run() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << "demo: " << failure.what() << "\n";
    }
    Aws::ShutdownAPI(options);
    return status;
}
