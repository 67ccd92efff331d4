#include "cppmicroservices/ServiceInterface.h"
#include "cppmicroservices/ServiceReferenceBase.h"
#include "cppmicroservices/ServiceRegistrationBase.h"
#include "services/RegisteredService.hpp"

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <utility>

namespace cppmicroservices {

std::string detail::GetDemangledName(const std::type_info& type) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    return status == 0 ? name.get() : type.name();
}

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
