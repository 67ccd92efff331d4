#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>
#include <aws/core/utils/memory/stl/AWSVector.h>

#include <utility>

namespace Aws::Endpoint {

/// What an operation tells the endpoint provider about one request, such as its bucket.
class EndpointParameter {
public:
    EndpointParameter(Aws::String name, Aws::String value)
        : name_(std::move(name)), value_(std::move(value)) {}

    const Aws::String& GetName() const { return name_; }
    const Aws::String& GetStringValueNoCheck() const { return value_; }

private:
    Aws::String name_;
    Aws::String value_;
};

using EndpointParameters = Aws::Vector<EndpointParameter>;

}  // namespace Aws::Endpoint
