#include "components/ComponentDescription.hpp"

#include "bundle/ManifestNode.hpp"

#include <stdexcept>

namespace cppmicroservices::detail {

namespace {

LDAPFilter targetOf(const ManifestNode& reference) {
    const auto target = reference.find("target");
    if (!target) return {};
    try {
        return LDAPFilter(target->text());
    } catch (const std::invalid_argument& error) {
        target->fail(error.what());
    }
}

ReferenceDescription referenceOf(const ManifestNode& reference) {
    reference.requireText("policy", "static");
    reference.requireText("cardinality", "1..1");
    return {reference.at("name").text(), reference.at("interface").text(), targetOf(reference)};
}

std::vector<ReferenceDescription> referencesOf(const ManifestNode& component) {
    std::vector<ReferenceDescription> references;
    const auto list = component.find("references");
    if (!list) return references;
    for (const ManifestNode& reference : list->list())
        references.push_back(referenceOf(reference));
    const auto inject = component.find("inject-references");
    if (!references.empty() && inject && !inject->truth()) inject->fail("only true is supported");
    return references;
}

std::vector<std::string> interfacesOf(const ManifestNode& component) {
    std::vector<std::string> interfaces;
    const auto service = component.find("service");
    if (!service) return interfaces;
    service->requireText("scope", "singleton");
    for (const ManifestNode& interface : service->at("interfaces").list())
        interfaces.push_back(interface.text());
    if (interfaces.empty()) service->at("interfaces").fail("a service needs an interface");
    return interfaces;
}

ServiceProperties propertiesOf(const ManifestNode& component) {
    ServiceProperties properties;
    if (const auto given = component.find("properties"))
        for (const auto& [name, value] : given->object().items())
            properties.emplace(name, valueOf(value));
    return properties;
}

ComponentDescription componentOf(const ManifestNode& component) {
    const auto enabled = component.find("enabled");
    if (enabled && !enabled->truth()) enabled->fail("only true is supported");
    const std::string implementationClass = component.at("implementation-class").text();
    const auto name = component.find("name");
    return {name ? name->text() : implementationClass, implementationClass, interfacesOf(component),
            propertiesOf(component), referencesOf(component)};
}

}  // namespace

std::vector<ComponentDescription> componentsOf(const nlohmann::json& manifest) {
    std::vector<ComponentDescription> components;
    const auto scr = ManifestNode(manifest).find("scr");
    if (!scr) return components;
    scr->requireVersion(1);
    for (const ManifestNode& component : scr->at("components").list())
        components.push_back(componentOf(component));
    return components;
}

}  // namespace cppmicroservices::detail
