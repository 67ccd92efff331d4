#include "operations/Routes.hpp"

#include <algorithm>
#include <array>

#include "operations/S3Error.hpp"

namespace s3server {
namespace {

constexpr auto Document = BodyKind::Document;

constexpr Route configurationRoute(std::string_view operation, std::string_view subresource) {
    return {operation, "GET", Resource::Bucket, subresource, false, Document, false, getBucketConfiguration};
}

constexpr std::array routes{
    Route{"ListBuckets", "GET", Resource::Service, "", false, Document, true, listBuckets},
    Route{"CreateBucket", "PUT", Resource::Bucket, "", false, Document, true, createBucket},
    Route{"DeleteBucket", "DELETE", Resource::Bucket, "", false, Document, false, deleteBucket},
    Route{"HeadBucket", "HEAD", Resource::Bucket, "", false, Document, false, headBucket},
    Route{"GetBucketLocation", "GET", Resource::Bucket, "location", false, Document, true, getBucketLocation},
    Route{"ListObjects", "GET", Resource::Bucket, "", false, Document, false, listObjects},
    Route{"ListObjectsV2", "GET", Resource::Bucket, "list-type", false, Document, false, listObjectsV2},
    Route{"DeleteObjects", "POST", Resource::Bucket, "delete", false, Document, false, deleteObjects},
    Route{"ListMultipartUploads", "GET", Resource::Bucket, "uploads", false, Document, false,
          listMultipartUploads},
    Route{"GetBucketAcl", "GET", Resource::Bucket, "acl", false, Document, false, getBucketAcl},
    Route{"GetBucketRequestPayment", "GET", Resource::Bucket, "requestPayment", false, Document, false,
          getBucketRequestPayment},
    configurationRoute("GetBucketAccelerateConfiguration", "accelerate"),
    configurationRoute("GetBucketCors", "cors"),
    configurationRoute("GetBucketEncryption", "encryption"),
    configurationRoute("GetBucketLifecycleConfiguration", "lifecycle"),
    configurationRoute("GetBucketLogging", "logging"),
    configurationRoute("GetBucketNotificationConfiguration", "notification"),
    configurationRoute("GetBucketOwnershipControls", "ownershipControls"),
    configurationRoute("GetBucketPolicy", "policy"),
    configurationRoute("GetBucketPolicyStatus", "policyStatus"),
    configurationRoute("GetBucketReplication", "replication"),
    configurationRoute("GetBucketTagging", "tagging"),
    configurationRoute("GetBucketVersioning", "versioning"),
    configurationRoute("GetBucketWebsite", "website"),
    configurationRoute("GetObjectLockConfiguration", "object-lock"),
    configurationRoute("GetPublicAccessBlock", "publicAccessBlock"),
    Route{"GetObject", "GET", Resource::Object, "", false, Document, false, getObject},
    Route{"HeadObject", "HEAD", Resource::Object, "", false, Document, false, getObject},
    Route{"GetObjectAcl", "GET", Resource::Object, "acl", false, Document, false, getObjectAcl},
    Route{"GetObjectTagging", "GET", Resource::Object, "tagging", false, Document, false, getObjectTagging},
    Route{"PutObject", "PUT", Resource::Object, "", false, BodyKind::Object, false, putObject},
    Route{"CopyObject", "PUT", Resource::Object, "", true, Document, false, copyObject},
    Route{"DeleteObject", "DELETE", Resource::Object, "", false, Document, false, deleteObject},
    Route{"CreateMultipartUpload", "POST", Resource::Object, "uploads", false, Document, false,
          createMultipartUpload},
    Route{"UploadPart", "PUT", Resource::Object, "partNumber&uploadId", false, BodyKind::Object, false,
          uploadPart},
    Route{"UploadPartCopy", "PUT", Resource::Object, "partNumber&uploadId", true, Document, false,
          uploadPartCopy},
    Route{"CompleteMultipartUpload", "POST", Resource::Object, "uploadId", false, Document, false,
          completeMultipartUpload},
    Route{"AbortMultipartUpload", "DELETE", Resource::Object, "uploadId", false, Document, false,
          abortMultipartUpload},
    Route{"ListParts", "GET", Resource::Object, "uploadId", false, Document, false, listParts},
};

// Every parameter by which the S3 API tells operations apart, also those of operations that aren't here: a
// PUT of KEY?tagging must not become a PUT of KEY.
constexpr std::array<std::string_view, 41> subresourceNames{"accelerate",
                                                            "acl",
                                                            "analytics",
                                                            "attributes",
                                                            "cors",
                                                            "delete",
                                                            "encryption",
                                                            "intelligent-tiering",
                                                            "inventory",
                                                            "legal-hold",
                                                            "lifecycle",
                                                            "list-type",
                                                            "location",
                                                            "logging",
                                                            "metadataConfiguration",
                                                            "metadataTable",
                                                            "metrics",
                                                            "notification",
                                                            "object-lock",
                                                            "ownershipControls",
                                                            "partNumber",
                                                            "policy",
                                                            "policyStatus",
                                                            "publicAccessBlock",
                                                            "renameObject",
                                                            "replication",
                                                            "requestPayment",
                                                            "restore",
                                                            "retention",
                                                            "select",
                                                            "select-type",
                                                            "session",
                                                            "tagging",
                                                            "torrent",
                                                            "uploadId",
                                                            "uploads",
                                                            "versionId",
                                                            "versioning",
                                                            "versions",
                                                            "website",
                                                            "abac"};

std::string subresourcesOf(const Request& request) {
    std::vector<std::string> names;
    for (const auto& [name, value] : request.query) {
        const bool known =
            std::find(subresourceNames.begin(), subresourceNames.end(), name) != subresourceNames.end();
        if (known) names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    std::string joined;
    for (const std::string& name : names)
        joined += joined.empty() ? name : '&' + name;
    return joined;
}

Resource resourceOf(const Request& request) {
    if (request.bucket.empty()) return Resource::Service;
    return request.key.empty() ? Resource::Bucket : Resource::Object;
}

constexpr std::string_view resourceName(Resource resource) {
    switch (resource) {
        case Resource::Service:
            return "SERVICE";
        case Resource::Bucket:
            return "BUCKET";
        case Resource::Object:
            return "OBJECT";
    }
    return "";
}

}  // namespace

const Route& findRoute(const Request& request) {
    const Resource resource = resourceOf(request);
    const std::string subresources = subresourcesOf(request);
    const bool copies = request.hasHeader("x-amz-copy-source");
    for (const Route& route : routes) {
        if (route.method == request.method && route.resource == resource &&
            route.subresources == subresources && route.copies == copies)
            return route;
    }
    if (!subresources.empty()) throw S3Error("NotImplemented").with("QueryParameter", subresources);
    throw S3Error("MethodNotAllowed")
        .with("Method", request.method)
        .with("ResourceType", std::string(resourceName(resource)));
}

bool isOperation(std::string_view name) {
    return std::any_of(routes.begin(), routes.end(),
                       [name](const Route& route) { return route.operation == name; });
}

}  // namespace s3server
