#pragma once

#include "cppmicroservices/ServiceReference.h"
#include "cppmicroservices/ServiceRegistrationBase.h"

#include <utility>

namespace cppmicroservices {

/// The registration of a service under one or more interfaces.
template <class I1, class... Interfaces>
class ServiceRegistration : public ServiceRegistrationBase {
public:
    ServiceRegistration() = default;
    explicit ServiceRegistration(ServiceRegistrationBase other) : ServiceRegistrationBase(std::move(other)) {}

    ServiceReference<I1> GetReference() const { return ServiceRegistrationBase::GetReference(); }
};

template <>
class ServiceRegistration<void> : public ServiceRegistrationBase {
public:
    ServiceRegistration() = default;
    ServiceRegistration(ServiceRegistrationBase other) : ServiceRegistrationBase(std::move(other)) {}
};

using ServiceRegistrationU = ServiceRegistration<void>;

}  // namespace cppmicroservices
