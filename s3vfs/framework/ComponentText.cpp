#include "framework/ComponentText.hpp"

#include <algorithm>

namespace s3vfs {

using namespace cppmicroservices::service::component::runtime::dto;

namespace {

/// What a reference is to, as far as the component's description tells.
std::string interfaceOf(const ComponentConfigurationDTO& component, const std::string& reference) {
    const auto& all = component.description.references;
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.name == reference; });
    return found == all.end() ? "service" : found->interfaceName;
}

std::string missingServices(const ComponentConfigurationDTO& component) {
    std::string text;
    for (const auto& reference : component.unsatisfiedReferences) {
        text += (text.empty() ? "" : "; ") + reference.name + ": there is no " +
                interfaceOf(component, reference.name);
        if (!reference.target.empty()) text += " with " + reference.target;
    }
    return text;
}

std::string stateOf(const ComponentConfigurationDTO& component) {
    switch (component.state) {
        case ComponentState::ACTIVE:
            return "active";
        case ComponentState::SATISFIED:
            return "satisfied, but not active: it could not be made";
        default:
            return "unsatisfied: " + missingServices(component);
    }
}

}  // namespace

std::string describe(const ComponentConfigurationDTO& component) {
    return component.description.implementationClass + " is " + stateOf(component);
}

}  // namespace s3vfs
