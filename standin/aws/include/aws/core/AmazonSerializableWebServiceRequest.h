#pragma once

#include <aws/core/AmazonWebServiceRequest.h>
#include <aws/core/utils/memory/stl/AWSString.h>

#include <memory>

namespace Aws {

/// A request whose body, if any, is a document made of its fields.
class AmazonSerializableWebServiceRequest : public AmazonWebServiceRequest {
public:
    /// Empty when the operation has no document.
    virtual Aws::String SerializePayload() const = 0;

    std::shared_ptr<Aws::IOStream> GetBody() const override;
};

}  // namespace Aws
