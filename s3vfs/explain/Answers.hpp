#pragma once

#include <aws/core/auth/AWSCredentials.h>
#include <aws/core/client/ClientConfiguration.h>
#include <aws/core/endpoint/EndpointProviderBase.h>
#include <aws/s3/S3ServiceClientModel.h>

#include <string>

namespace s3vfs::explain {

/// What is asked only once, since it may take a while or cost a request.
struct Answers {
    Aws::Client::ClientConfiguration configuration;     ///< as the plug-in makes it
    Aws::Auth::AWSCredentials credentials;              ///< the first complete ones; empty without any
    std::string lookupRegion;                           ///< of the client that asked for the location
    Aws::S3::Model::GetBucketLocationOutcome location;  ///< where S3 says that the bucket is
    std::string region;  ///< of the bucket, as the plug-in has it; empty when nobody says: the SDK's own then
    Aws::Endpoint::ResolveEndpointOutcome endpoint;  ///< where the SDK sends the bucket's requests
};

/// Asks S3 where a bucket is, as the plug-in does or would do, through the same region and endpoint, and the
/// SDK where it sends the bucket's requests. The metadata service isn't asked for `credentials` again.
Answers ask(const std::string& bucket, const Aws::Auth::AWSCredentials& credentials);

/// Whether the plug-in asks S3 where the bucket is: only when nobody chose a region or an endpoint.
bool pluginAsks();

/// The region for which the bucket's requests are signed; empty when the SDK can't send any.
std::string signingRegion(const Answers& answers);

/// The URL of the bucket's requests, which may hold a password; empty when the SDK can't send any.
std::string bucketUrl(const Answers& answers);

}  // namespace s3vfs::explain
