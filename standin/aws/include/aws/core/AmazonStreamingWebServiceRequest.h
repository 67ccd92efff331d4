#pragma once

#include <aws/core/AmazonWebServiceRequest.h>
#include <aws/core/utils/memory/stl/AWSString.h>

#include <memory>
#include <utility>

namespace Aws {

/// A request whose body is a stream of the caller's. The body is sent from the stream's beginning,
/// whatever its position, and once more from there for every further attempt.
class AmazonStreamingWebServiceRequest : public AmazonWebServiceRequest {
public:
    std::shared_ptr<Aws::IOStream> GetBody() const override { return body_; }
    void SetBody(std::shared_ptr<Aws::IOStream> body) { body_ = std::move(body); }

    const Aws::String& GetContentType() const { return contentType_; }
    void SetContentType(const Aws::String& contentType) { contentType_ = contentType; }

private:
    std::shared_ptr<Aws::IOStream> body_;
    Aws::String contentType_ = "binary/octet-stream";
};

}  // namespace Aws
