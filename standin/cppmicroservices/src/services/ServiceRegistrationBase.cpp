#include "cppmicroservices/ServiceRegistrationBase.h"

#include "services/RegisteredService.hpp"

#include <stdexcept>
#include <utility>

namespace cppmicroservices {

ServiceRegistrationBase::ServiceRegistrationBase(std::shared_ptr<detail::RegisteredService> service)
    : service_(std::move(service)) {}

ServiceReferenceBase ServiceRegistrationBase::GetReference() const {
    ServiceReferenceBase reference(service_);
    if (!reference) throw std::logic_error("the service isn't registered any more");
    return reference;
}

void ServiceRegistrationBase::Unregister() {
    if (!service_) throw std::logic_error("there is no registration");
    service_->withdraw();
}

}  // namespace cppmicroservices
