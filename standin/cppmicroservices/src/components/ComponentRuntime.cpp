#include "components/ComponentRuntime.hpp"

#include "bundle/InstalledBundle.hpp"
#include "components/Component.hpp"
#include "cppmicroservices/Constants.h"
#include "framework/FrameworkCore.hpp"

#include <algorithm>

namespace cppmicroservices::detail {

using namespace service::component::runtime::dto;
using framework::dto::BundleDTO;
using framework::dto::ServiceReferenceDTO;

namespace {

BundleDTO dtoOf(const InstalledBundle& bundle) {
    return {static_cast<unsigned long>(bundle.id()), bundle.state(), bundle.manifest().symbolicName,
            bundle.manifest().version};
}

ServiceReferenceDTO dtoOf(const RegisteredService& service) {
    return {static_cast<unsigned long>(service.id()), static_cast<unsigned long>(service.bundleId()),
            service.properties()};
}

ReferenceDTO dtoOf(const ReferenceDescription& reference) {
    return {reference.name, reference.interfaceName,    "1..1", "static",
            "reluctant",    reference.target.ToString()};
}

ComponentDescriptionDTO dtoOf(const InstalledBundle& bundle, const ComponentDescription& component) {
    ComponentDescriptionDTO description{component.name,
                                        dtoOf(bundle),
                                        Constants::SCOPE_SINGLETON,
                                        component.implementationClass,
                                        component.interfaces,
                                        component.properties,
                                        {}};
    for (const ReferenceDescription& reference : component.references)
        description.references.push_back(dtoOf(reference));
    return description;
}

void addReference(const ReferenceDescription& reference, const BoundService& bound,
                  ComponentConfigurationDTO& configuration) {
    if (bound.object)
        configuration.satisfiedReferences.push_back(
            {reference.name, reference.target.ToString(), {dtoOf(*bound.service)}});
    else
        configuration.unsatisfiedReferences.push_back({reference.name, reference.target.ToString()});
}

ComponentConfigurationDTO dtoOf(const Component& component, const ComponentDescriptionDTO& description) {
    ComponentConfigurationDTO configuration;
    configuration.description = description;
    configuration.id = component.id();
    configuration.properties = component.properties();
    const auto bound = component.bound();
    const auto services = bound ? *bound : component.candidates();
    const auto& references = component.description().references;
    for (std::size_t i = 0; i < references.size(); ++i)
        addReference(references[i], services[i], configuration);
    if (bound)
        configuration.state = ComponentState::ACTIVE;
    else if (configuration.unsatisfiedReferences.empty())
        configuration.state = ComponentState::SATISFIED;
    return configuration;
}

}  // namespace

std::vector<ComponentDescriptionDTO> ComponentRuntime::GetComponentDescriptionDTOs(
    const std::vector<Bundle>& wanted) const {
    std::vector<ComponentDescriptionDTO> descriptions;
    for (const auto& bundle : bundles()) {
        const bool isWanted = std::find(wanted.begin(), wanted.end(), Bundle(bundle)) != wanted.end();
        if (!wanted.empty() && !isWanted) continue;
        for (const auto& component : bundle->components())
            descriptions.push_back(dtoOf(*bundle, component->description()));
    }
    return descriptions;
}

std::vector<ComponentConfigurationDTO> ComponentRuntime::GetComponentConfigurationDTOs(
    const ComponentDescriptionDTO& description) const {
    std::vector<ComponentConfigurationDTO> configurations;
    for (const auto& bundle : bundles())
        for (const auto& component : bundle->components())
            if (static_cast<unsigned long>(bundle->id()) == description.bundle.id &&
                component->description().name == description.name)
                configurations.push_back(dtoOf(*component, description));
    return configurations;
}

std::vector<std::shared_ptr<InstalledBundle>> ComponentRuntime::bundles() const {
    const auto core = core_.lock();
    return core ? core->bundles() : std::vector<std::shared_ptr<InstalledBundle>>();
}

}  // namespace cppmicroservices::detail
