#include <aws/core/AmazonSerializableWebServiceRequest.h>

#include "core/BufferStream.hpp"

namespace Aws {

std::shared_ptr<Aws::IOStream> AmazonSerializableWebServiceRequest::GetBody() const {
    Aws::String document = SerializePayload();
    if (document.empty()) return nullptr;
    return std::make_shared<standin::aws::BufferStream>(std::move(document));
}

}  // namespace Aws
