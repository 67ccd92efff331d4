#include "framework/ComponentText.hpp"

#include <gtest/gtest.h>

using namespace cppmicroservices::service::component::runtime::dto;

namespace {

ComponentConfigurationDTO component(ComponentState state) {
    ComponentConfigurationDTO component;
    component.description.implementationClass = "a::Baker";
    component.state = state;
    for (const char* const name : {"flour", "oven"}) {
        component.description.references.emplace_back();
        component.description.references.back().name = name;
        component.description.references.back().interfaceName = "a::" + std::string(name);
    }
    return component;
}

void take(ComponentConfigurationDTO& component, const std::string& reference, const std::string& target) {
    component.unsatisfiedReferences.emplace_back();
    component.unsatisfiedReferences.back().name = reference;
    component.unsatisfiedReferences.back().target = target;
}

TEST(ComponentText, SaysNoMoreOfAnActiveComponent) {
    EXPECT_EQ(s3vfs::describe(component(ComponentState::ACTIVE)), "a::Baker is active");
}

TEST(ComponentText, NamesEveryServiceThatIsMissing) {
    auto waiting = component(ComponentState::UNSATISFIED_REFERENCE);
    take(waiting, "flour", "(kind=rye)");
    take(waiting, "oven", "");
    EXPECT_EQ(
        s3vfs::describe(waiting),
        "a::Baker is unsatisfied: flour: there is no a::flour with (kind=rye); oven: there is no a::oven");
}

TEST(ComponentText, TellsAComponentThatFailsFromOneThatWaits) {
    EXPECT_EQ(s3vfs::describe(component(ComponentState::SATISFIED)),
              "a::Baker is satisfied, but not active: it could not be made");
}

}  // namespace
