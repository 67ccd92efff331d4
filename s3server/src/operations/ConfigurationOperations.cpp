#include <algorithm>
#include <array>

#include "operations/Operations.hpp"
#include "operations/S3Error.hpp"

namespace s3server {
namespace {

struct Refusal {
    std::string_view subresource;
    std::string_view code;
};

// How S3 says that a bucket never was given such a configuration.
constexpr std::array refusals{
    Refusal{"cors", "NoSuchCORSConfiguration"},
    Refusal{"encryption", "ServerSideEncryptionConfigurationNotFoundError"},
    Refusal{"lifecycle", "NoSuchLifecycleConfiguration"},
    Refusal{"object-lock", "ObjectLockConfigurationNotFoundError"},
    Refusal{"ownershipControls", "OwnershipControlsNotFoundError"},
    Refusal{"policy", "NoSuchBucketPolicy"},
    Refusal{"policyStatus", "NoSuchBucketPolicy"},
    Refusal{"publicAccessBlock", "NoSuchPublicAccessBlockConfiguration"},
    Refusal{"replication", "ReplicationConfigurationNotFoundError"},
    Refusal{"tagging", "NoSuchTagSet"},
    Refusal{"website", "NoSuchWebsiteConfiguration"},
};

struct EmptyDocument {
    std::string_view subresource;
    std::string_view root;
};

// The others, which S3 answers by a document without a setting in it.
constexpr std::array emptyDocuments{
    EmptyDocument{"accelerate", "AccelerateConfiguration"},
    EmptyDocument{"logging", "BucketLoggingStatus"},
    EmptyDocument{"notification", "NotificationConfiguration"},
    EmptyDocument{"versioning", "VersioningConfiguration"},
};

template <class Rows>
auto askedFor(const Rows& rows, const Request& request) {
    return std::find_if(rows.begin(), rows.end(),
                        [&request](const auto& row) { return request.parameter(row.subresource); });
}

/// All belongs to one owner, who may do everything.
Reply ownersAlone() {
    XmlWriter xml;
    xml.openRoot("AccessControlPolicy");
    xml.open("Owner").element("ID", "s3server").element("DisplayName", "s3server").close();
    xml.open("AccessControlList").open("Grant");
    xml.open("Grantee", "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:type=\"CanonicalUser\"");
    xml.element("ID", "s3server").element("DisplayName", "s3server").close();
    xml.element("Permission", "FULL_CONTROL").close().close().close();
    return xmlReply(xml);
}

}  // namespace

Reply getBucketConfiguration(const Call& call) {
    const Request& request = call.request;
    call.store.bucket(request.bucket);
    if (const auto* const refusal = askedFor(refusals, request); refusal != refusals.end())
        throw S3Error(refusal->code).with("BucketName", request.bucket);
    XmlWriter xml;
    xml.rootWithText(askedFor(emptyDocuments, request)->root, "");
    return xmlReply(xml);
}

Reply getBucketRequestPayment(const Call& call) {
    call.store.bucket(call.request.bucket);
    XmlWriter xml;
    return xmlReply(xml.openRoot("RequestPaymentConfiguration").element("Payer", "BucketOwner").close());
}

Reply getBucketAcl(const Call& call) {
    call.store.bucket(call.request.bucket);
    return ownersAlone();
}

Reply getObjectAcl(const Call& call) {
    call.store.object(call.request.bucket, call.request.key);
    return ownersAlone();
}

}  // namespace s3server
