#include "cppmicroservices/ServiceReferenceBase.h"

#include "services/RegisteredService.hpp"

#include <utility>

namespace cppmicroservices {

ServiceReferenceBase::ServiceReferenceBase(std::shared_ptr<detail::RegisteredService> service)
    : service_(std::move(service)) {}

ServiceReferenceBase::operator bool() const {
    return service_ && service_->isRegistered();
}

Any ServiceReferenceBase::GetProperty(const std::string& name) const {
    return service_ ? service_->property(name) : Any();
}

bool ServiceReferenceBase::IsConvertibleTo(const std::string& interfaceName) const {
    return service_ && service_->provides(interfaceName);
}

}  // namespace cppmicroservices
