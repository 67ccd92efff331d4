#include "replay/Operations.hpp"

#include "replay/BodyStream.hpp"
#include "replay/Outcomes.hpp"

#include <aws/s3/model/AbortMultipartUploadRequest.h>
#include <aws/s3/model/CompleteMultipartUploadRequest.h>
#include <aws/s3/model/CreateMultipartUploadRequest.h>
#include <aws/s3/model/DeleteObjectRequest.h>
#include <aws/s3/model/GetBucketLocationRequest.h>
#include <aws/s3/model/GetObjectRequest.h>
#include <aws/s3/model/HeadBucketRequest.h>
#include <aws/s3/model/HeadObjectRequest.h>
#include <aws/s3/model/ListObjectsV2Request.h>
#include <aws/s3/model/PutObjectRequest.h>
#include <aws/s3/model/UploadPartCopyRequest.h>
#include <aws/s3/model/UploadPartRequest.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace replay {
namespace {

using namespace Aws::S3::Model;
using Aws::S3::S3Client;

/// The fields of `set` not handed out yet.
class Fields {
public:
    explicit Fields(const Json& set) : left_(set) {}

    template <typename Value, typename Setter>
    void take(const char* name, Setter&& setter) {
        const auto found = left_.find(name);
        if (found == left_.end()) return;
        setter(found->template get<Value>());
        left_.erase(found);
    }

    void requireAllTaken() const {
        if (!left_.empty()) throw std::runtime_error("no setter for " + left_.dump());
    }

private:
    Json left_;
};

// The setters of request classes are overloaded, so each is named in a lambda of its own.
template <typename Request>
void setBucket(Fields& fields, Request& request) {
    fields.take<std::string>("Bucket", [&](const std::string& value) { request.SetBucket(value); });
}

template <typename Request>
void setKey(Fields& fields, Request& request) {
    setBucket(fields, request);
    fields.take<std::string>("Key", [&](const std::string& value) { request.SetKey(value); });
}

template <typename Request>
void setUpload(Fields& fields, Request& request) {
    setKey(fields, request);
    fields.take<std::string>("UploadId", [&](const std::string& value) { request.SetUploadId(value); });
}

template <typename Request>
void setPart(Fields& fields, Request& request) {
    setUpload(fields, request);
    fields.take<int>("PartNumber", [&](int value) { request.SetPartNumber(value); });
}

template <typename Request>
void setBody(Fields& fields, Request& request) {
    fields.take<Json>("Body", [&](const Json& value) { request.SetBody(makeBodyStream(value)); });
    fields.take<long long>("ContentLength", [&](long long value) { request.SetContentLength(value); });
}

void setFields(Fields& fields, HeadBucketRequest& request) {
    setBucket(fields, request);
}

void setFields(Fields& fields, GetBucketLocationRequest& request) {
    setBucket(fields, request);
}

void setFields(Fields& fields, ListObjectsV2Request& request) {
    setBucket(fields, request);
    fields.take<std::string>("Prefix", [&](const std::string& value) { request.SetPrefix(value); });
    fields.take<std::string>("Delimiter", [&](const std::string& value) { request.SetDelimiter(value); });
    fields.take<std::string>("ContinuationToken",
                             [&](const std::string& value) { request.SetContinuationToken(value); });
    fields.take<int>("MaxKeys", [&](int value) { request.SetMaxKeys(value); });
    fields.take<std::string>("EncodingType",
                             [&](const std::string&) { request.SetEncodingType(EncodingType::url); });
}

void setFields(Fields& fields, HeadObjectRequest& request) {
    setKey(fields, request);
}

void setFields(Fields& fields, GetObjectRequest& request) {
    setKey(fields, request);
    fields.take<std::string>("Range", [&](const std::string& value) { request.SetRange(value); });
}

void setFields(Fields& fields, PutObjectRequest& request) {
    setKey(fields, request);
    setBody(fields, request);
}

void setFields(Fields& fields, DeleteObjectRequest& request) {
    setKey(fields, request);
}

void setFields(Fields& fields, CreateMultipartUploadRequest& request) {
    setKey(fields, request);
}

void setFields(Fields& fields, UploadPartRequest& request) {
    setPart(fields, request);
    setBody(fields, request);
}

void setFields(Fields& fields, UploadPartCopyRequest& request) {
    setPart(fields, request);
    fields.take<std::string>("CopySource", [&](const std::string& value) { request.SetCopySource(value); });
    fields.take<std::string>("CopySourceRange",
                             [&](const std::string& value) { request.SetCopySourceRange(value); });
}

CompletedPart partFrom(const Json& set) {
    CompletedPart part;
    Fields fields(set);
    fields.take<int>("PartNumber", [&](int value) { part.SetPartNumber(value); });
    fields.take<std::string>("ETag", [&](const std::string& value) { part.SetETag(value); });
    fields.requireAllTaken();
    return part;
}

void setFields(Fields& fields, CompleteMultipartUploadRequest& request) {
    setUpload(fields, request);
    fields.take<Json>("Parts", [&](const Json& parts) {
        CompletedMultipartUpload upload;
        for (const Json& part : parts)
            upload.AddParts(partFrom(part));
        request.SetMultipartUpload(upload);
    });
}

void setFields(Fields& fields, AbortMultipartUploadRequest& request) {
    setUpload(fields, request);
}

template <typename Request>
Request requestFrom(const Json& recorded) {
    Request request;
    Fields fields(recorded.at("set"));
    setFields(fields, request);
    fields.requireAllTaken();
    return request;
}

template <typename Request, auto Operation>
Json call(const S3Client& client, const Json& recorded) {
    const auto request = requestFrom<Request>(recorded);
    const auto outcome = (client.*Operation)(request);
    Json described{{"success", outcome.IsSuccess()}};
    if (outcome.IsSuccess())
        described["result"] = describe(outcome.GetResult());
    else
        described["error"] = describe(outcome.GetError());
    if (recorded["set"].contains("Body")) described.update(describeAfterCall(request.GetBody().get()));
    return described;
}

struct Operation {
    std::string_view name;
    Json (*call)(const S3Client& client, const Json& recorded);
};

template <typename Request, auto Member>
constexpr Operation operation(std::string_view name) {
    return {name, call<Request, Member>};
}

constexpr std::array<Operation, 12> operations{{
    operation<HeadBucketRequest, &S3Client::HeadBucket>("HeadBucket"),
    operation<GetBucketLocationRequest, &S3Client::GetBucketLocation>("GetBucketLocation"),
    operation<ListObjectsV2Request, &S3Client::ListObjectsV2>("ListObjectsV2"),
    operation<HeadObjectRequest, &S3Client::HeadObject>("HeadObject"),
    operation<GetObjectRequest, &S3Client::GetObject>("GetObject"),
    operation<PutObjectRequest, &S3Client::PutObject>("PutObject"),
    operation<DeleteObjectRequest, &S3Client::DeleteObject>("DeleteObject"),
    operation<CreateMultipartUploadRequest, &S3Client::CreateMultipartUpload>("CreateMultipartUpload"),
    operation<UploadPartRequest, &S3Client::UploadPart>("UploadPart"),
    operation<UploadPartCopyRequest, &S3Client::UploadPartCopy>("UploadPartCopy"),
    operation<CompleteMultipartUploadRequest, &S3Client::CompleteMultipartUpload>("CompleteMultipartUpload"),
    operation<AbortMultipartUploadRequest, &S3Client::AbortMultipartUpload>("AbortMultipartUpload"),
}};

const Operation& operationOf(const Json& recorded) {
    const std::string name = recorded.at("operation");
    const auto* const found = std::find_if(operations.begin(), operations.end(),
                                           [&name](const Operation& known) { return known.name == name; });
    if (found == operations.end()) throw std::runtime_error("unknown operation " + name);
    return *found;
}

}  // namespace

Json callOperation(const S3Client& client, const Json& recorded) {
    return operationOf(recorded).call(client, recorded);
}

Json resolveEndpoint(const Aws::S3::Endpoint::S3EndpointProvider& provider, const Json& recorded) {
    const Aws::Endpoint::EndpointParameter bucket("Bucket",
                                                  recorded.at("set").at("Bucket").get<std::string>());
    const auto outcome = provider.ResolveEndpoint({bucket});
    if (!outcome.IsSuccess()) return {{"endpoint", {{"error", outcome.GetError().GetMessage()}}}};
    const auto& scheme = outcome.GetResult().GetAttributes()->authScheme;
    return {{"endpoint",
             {{"url", outcome.GetResult().GetURL()},
              {"auth_scheme", scheme.GetName()},
              {"signing_name", *scheme.GetSigningName()},
              {"signing_region", *scheme.GetSigningRegion()}}}};
}

}  // namespace replay
