#include "AllOperations.hpp"

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3ClientConfiguration.h>
#include <aws/s3/S3EndpointProvider.h>
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
#include <iterator>
#include <s3server/Options.hpp>
#include <sstream>

using namespace Aws::S3::Model;
using Aws::S3::S3Client;

namespace {

template <typename Outcome>
std::optional<Aws::S3::S3Error> failureIn(const Outcome& outcome) {
    if (outcome.IsSuccess()) return std::nullopt;
    return outcome.GetError();
}

template <typename Request>
Request ofBucket(const std::string& bucket) {
    Request request;
    request.SetBucket(bucket);
    return request;
}

template <typename Request>
Request ofObject(const std::string& bucket, const std::string& key) {
    auto request = ofBucket<Request>(bucket);
    request.SetKey(key);
    return request;
}

template <typename Request>
Request ofUpload(const std::string& bucket, const std::string& key) {
    auto request = ofObject<Request>(bucket, key);
    request.SetUploadId("id");
    return request;
}

template <typename Request>
Request ofPart(const std::string& bucket, const std::string& key) {
    auto request = ofUpload<Request>(bucket, key);
    request.SetPartNumber(1);
    return request;
}

template <typename Request>
Request withContent(Request request) {
    request.SetBody(std::make_shared<std::stringstream>("content"));
    return request;
}

using Text = const std::string&;

}  // namespace

void PrintTo(const Operation& operation, std::ostream* out) {
    *out << operation.name;
}

const std::vector<Operation>& allOperations() {
    static const std::vector<Operation> all{
        {"HeadBucket", false, false,
         [](const S3Client& client, Text bucket, Text) {
             return failureIn(client.HeadBucket(ofBucket<HeadBucketRequest>(bucket)));
         }},
        {"GetBucketLocation", false, true,
         [](const S3Client& client, Text bucket, Text) {
             return failureIn(client.GetBucketLocation(ofBucket<GetBucketLocationRequest>(bucket)));
         }},
        {"ListObjectsV2", false, true,
         [](const S3Client& client, Text bucket, Text) {
             return failureIn(client.ListObjectsV2(ofBucket<ListObjectsV2Request>(bucket)));
         }},
        {"HeadObject", true, false,
         [](const S3Client& client, Text bucket, Text key) {
             return failureIn(client.HeadObject(ofObject<HeadObjectRequest>(bucket, key)));
         }},
        {"GetObject", true, false,
         [](const S3Client& client, Text bucket, Text key) {
             return failureIn(client.GetObject(ofObject<GetObjectRequest>(bucket, key)));
         }},
        {"PutObject", true, true,
         [](const S3Client& client, Text bucket, Text key) {
             return failureIn(client.PutObject(withContent(ofObject<PutObjectRequest>(bucket, key))));
         }},
        {"DeleteObject", true, true,
         [](const S3Client& client, Text bucket, Text key) {
             return failureIn(client.DeleteObject(ofObject<DeleteObjectRequest>(bucket, key)));
         }},
        {"CreateMultipartUpload", true, true,
         [](const S3Client& client, Text bucket, Text key) {
             return failureIn(
                 client.CreateMultipartUpload(ofObject<CreateMultipartUploadRequest>(bucket, key)));
         }},
        {"UploadPart", true, true,
         [](const S3Client& client, Text bucket, Text key) {
             return failureIn(client.UploadPart(withContent(ofPart<UploadPartRequest>(bucket, key))));
         }},
        {"UploadPartCopy", true, true,
         [](const S3Client& client, Text bucket, Text key) {
             auto request = ofPart<UploadPartCopyRequest>(bucket, key);
             request.SetCopySource("b/source");
             return failureIn(client.UploadPartCopy(request));
         }},
        {"CompleteMultipartUpload", true, true,
         [](const S3Client& client, Text bucket, Text key) {
             return failureIn(
                 client.CompleteMultipartUpload(ofUpload<CompleteMultipartUploadRequest>(bucket, key)));
         }},
        {"AbortMultipartUpload", true, true, [](const S3Client& client, Text bucket, Text key) {
             return failureIn(
                 client.AbortMultipartUpload(ofUpload<AbortMultipartUploadRequest>(bucket, key)));
         }}};
    return all;
}

std::vector<Operation> objectOperations() {
    std::vector<Operation> chosen;
    std::copy_if(allOperations().begin(), allOperations().end(), std::back_inserter(chosen),
                 [](const Operation& each) { return each.isOfObject; });
    return chosen;
}

std::vector<Operation> documentOperations() {
    std::vector<Operation> chosen;
    std::copy_if(allOperations().begin(), allOperations().end(), std::back_inserter(chosen),
                 [](const Operation& each) { return each.answersWithDocument; });
    return chosen;
}

S3Client clientOf(const std::string& endpoint, const std::string& sessionToken) {
    Aws::Client::ClientConfiguration base;
    base.region = "us-east-1";
    base.endpointOverride = endpoint;
    base.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0);
    const Aws::S3::S3ClientConfiguration configuration(
        base, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, true,
        Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET);
    const auto& keys = s3server::defaultCredentials;
    return S3Client(std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>(keys.accessKey, keys.secretKey,
                                                                              sessionToken),
                    std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(), configuration);
}
