#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

#include "commands/Commands.hpp"
#include "framework/ComponentText.hpp"
#include "framework/ServiceFramework.hpp"
#include "messages/ManifestJson.hpp"
#include "messages/Text.hpp"

namespace s3vfs {

using cppmicroservices::service::component::runtime::dto::ComponentState;
using nlohmann::json;

namespace {

/// Only ASCII: nothing of a manifest reaches the terminal as it is.
std::string printableJson(const json& value) {
    return value.dump(2, ' ', true, json::error_handler_t::replace);
}

bool isActive(const ServiceFramework::Component& component) {
    return component.state == ComponentState::ACTIVE;
}

/// Returns whether all of the bundle's components are active.
bool printBundle(ServiceFramework& framework) {
    const auto bundle = framework.bundle();
    // Held meanwhile: a component may wait for somebody who wants its service.
    const auto factory = framework.findProviderFactory();
    const auto components = framework.components();
    std::cout << "bundle     " << printable(bundle.GetSymbolicName()) << "\n"
              << "file       " << printable(bundle.GetLocation()) << "\n";
    for (const auto& component : components)
        std::cout << "component  " << printable(describe(component)) << "\n";
    std::cout << "factory    " << (factory ? "offered for the scheme s3" : "none for the scheme s3") << "\n"
              << "manifest   " << printableJson(jsonOf(bundle.GetHeaders())) << "\n";
    return factory && std::all_of(components.begin(), components.end(), isActive);
}

}  // namespace

void addBundleCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand(
        "bundle", "Tell the plug-in's manifest, and whether its component is active, or why it isn't");
    command->callback([&chosen] { chosen = {"bundle", {}, printBundle}; });
}

}  // namespace s3vfs
