#pragma once

#include "cppmicroservices/servicecomponent/runtime/ServiceComponentRuntime.hpp"

#include <memory>
#include <utility>
#include <vector>

namespace cppmicroservices::detail {

class FrameworkCore;

class ComponentRuntime final : public service::component::runtime::ServiceComponentRuntime {
public:
    using Description = service::component::runtime::dto::ComponentDescriptionDTO;
    using Configuration = service::component::runtime::dto::ComponentConfigurationDTO;

    explicit ComponentRuntime(std::weak_ptr<FrameworkCore> core) : core_(std::move(core)) {}

    std::vector<Description> GetComponentDescriptionDTOs(const std::vector<Bundle>& bundles) const override;
    std::vector<Configuration> GetComponentConfigurationDTOs(const Description& description) const override;

private:
    std::vector<std::shared_ptr<InstalledBundle>> bundles() const;

    const std::weak_ptr<FrameworkCore> core_;
};

}  // namespace cppmicroservices::detail
