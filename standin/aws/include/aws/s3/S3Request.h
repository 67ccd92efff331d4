#pragma once

#include <aws/core/AmazonSerializableWebServiceRequest.h>
#include <aws/core/AmazonStreamingWebServiceRequest.h>

namespace Aws::S3 {

/// A request that has no body, save where the operation overrides SerializePayload().
class S3Request : public Aws::AmazonSerializableWebServiceRequest {
public:
    Aws::String SerializePayload() const override { return {}; }
};

/// A request whose body is a stream of the caller's.
using StreamingS3Request = Aws::AmazonStreamingWebServiceRequest;

}  // namespace Aws::S3
