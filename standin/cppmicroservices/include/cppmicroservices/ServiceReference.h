#pragma once

#include "cppmicroservices/ServiceInterface.h"
#include "cppmicroservices/ServiceReferenceBase.h"

namespace cppmicroservices {

/// A service that is seen as an S; of any interface when S is void.
template <class S>
class ServiceReference : public ServiceReferenceBase {
public:
    ServiceReference() = default;

    /// Names no service when the other's isn't registered under S.
    ServiceReference(const ServiceReferenceBase& other)
        : ServiceReferenceBase(
              other.IsConvertibleTo(us_service_interface_iid<S>()) ? other : ServiceReferenceBase()) {}
};

template <>
class ServiceReference<void> : public ServiceReferenceBase {
public:
    ServiceReference() = default;
    ServiceReference(const ServiceReferenceBase& other) : ServiceReferenceBase(other) {}
};

using ServiceReferenceU = ServiceReference<void>;

}  // namespace cppmicroservices
