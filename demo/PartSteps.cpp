#include "PartSteps.hpp"

#include <algorithm>
#include <sstream>
#include <vector>

#include "Files.hpp"

namespace demo {

using storage::cloudprovider::CloudClient;
using storage::cloudprovider::PartInfo;

namespace {

std::string download(CloudClient& bucket, const std::string& key) {
    std::ostringstream out;
    bucket.download(key, out, 0, 0);
    return out.str();
}

}  // namespace

// The caller writes the parts' tags down, as the host does, and completes the upload with them.
void uploadInParts(CloudClient& bucket, Report& report, const std::string& key, const std::string& content) {
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

void rewriteInParts(CloudClient& bucket, Report& report, const std::string& key, std::string content) {
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

void abandonUpload(CloudClient& bucket, Report& report, const s3server::Server& server,
                   const std::string& bucketName) {
    report.step("start an upload and think better of it");
    const auto uploadId = bucket.startMultipartUpload("abandoned", "");
    bucket.abortMultipartUpload("abandoned", uploadId);
    report.check(server.openUploads(bucketName) == 0, "no upload is left open");
    report.wire();
}

}  // namespace demo
