#pragma once

#include <aws/core/utils/memory/stl/AWSStreamFwd.h>

#include <memory>

namespace Aws {

/// One call of a service's operation, filled in by its setters before it is given to the client.
class AmazonWebServiceRequest {
public:
    virtual ~AmazonWebServiceRequest() = default;

    /// The operation's name, such as "PutObject".
    virtual const char* GetServiceRequestName() const = 0;

    /// Null when the request has no body.
    virtual std::shared_ptr<Aws::IOStream> GetBody() const { return nullptr; }

protected:
    AmazonWebServiceRequest() = default;
    AmazonWebServiceRequest(const AmazonWebServiceRequest&) = default;
    AmazonWebServiceRequest(AmazonWebServiceRequest&&) = default;
    AmazonWebServiceRequest& operator=(const AmazonWebServiceRequest&) = default;
    AmazonWebServiceRequest& operator=(AmazonWebServiceRequest&&) = default;
};

}  // namespace Aws
