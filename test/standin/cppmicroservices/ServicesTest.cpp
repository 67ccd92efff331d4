#include <cppmicroservices/Constants.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/process/StartedFramework.hpp"

namespace {

using namespace cppmicroservices;
using testing::UnorderedElementsAre;

class Tool {
public:
    virtual ~Tool() = default;
    virtual std::string name() const = 0;
};

class Sharp {
public:
    virtual ~Sharp() = default;
};

class Knife final : public Tool, public Sharp {
public:
    explicit Knife(std::string name) : name_(std::move(name)) {}
    std::string name() const override { return name_; }

private:
    std::string name_;
};

class Services : public testing::Test {
protected:
    auto add(const std::string& name, ServiceProperties properties = {}) {
        return context_.RegisterService<Tool, Sharp>(std::make_shared<Knife>(name), properties);
    }

    std::vector<std::string> namesOf(const std::string& filter = {}) {
        std::vector<std::string> names;
        for (const auto& reference : context_.GetServiceReferences<Tool>(filter))
            names.push_back(context_.GetService(reference)->name());
        return names;
    }

    testsupport::StartedFramework framework_;
    BundleContext context_ = framework_.context();
};

TEST_F(Services, AreFoundUnderEachOfTheirInterfaces) {
    const auto registration = add("knife");
    EXPECT_EQ(context_.GetService(context_.GetServiceReference<Tool>())->name(), "knife");
    const auto sharp = context_.GetService(context_.GetServiceReference<Sharp>());
    EXPECT_EQ(dynamic_cast<Knife&>(*sharp).name(), "knife");
    EXPECT_TRUE(registration.GetReference() == context_.GetServiceReference<Tool>());
}

TEST_F(Services, AreFoundByTheirProperties) {
    add("small", {{"size", 1}, {"for", std::string("bread")}});
    add("large", {{"size", 9}, {"for", std::string("meat")}});
    EXPECT_THAT(namesOf(), UnorderedElementsAre("small", "large"));
    EXPECT_THAT(namesOf("(size=9)"), UnorderedElementsAre("large"));
    EXPECT_THAT(namesOf("(FOR=b*)"), UnorderedElementsAre("small"));
    EXPECT_THAT(namesOf("(for=wood)"), UnorderedElementsAre());
}

TEST_F(Services, TellTheirProperties) {
    add("knife", {{"size", 7}});
    const auto reference = context_.GetServiceReference<Tool>();
    EXPECT_EQ(any_cast<int>(reference.GetProperty("size")), 7);
    EXPECT_EQ(any_cast<int>(reference.GetProperty("SIZE")), 7);
    EXPECT_TRUE(reference.GetProperty("weight").Empty());
    EXPECT_GT(any_cast<long>(reference.GetProperty(Constants::SERVICE_ID)), 0);
    EXPECT_THAT(any_cast<std::vector<std::string>>(reference.GetProperty(Constants::OBJECTCLASS)),
                UnorderedElementsAre(us_service_interface_iid<Tool>(), us_service_interface_iid<Sharp>()));
}

TEST_F(Services, AreChosenByRankingThenByAge) {
    add("first");
    add("second");
    EXPECT_EQ(context_.GetService(context_.GetServiceReference<Tool>())->name(), "first");
    add("third", {{Constants::SERVICE_RANKING, 1}});
    EXPECT_EQ(context_.GetService(context_.GetServiceReference<Tool>())->name(), "third");
}

TEST_F(Services, AreGoneOnceWithdrawn) {
    auto registration = add("knife");
    const auto reference = context_.GetServiceReference<Tool>();
    EXPECT_TRUE(reference);
    registration.Unregister();
    EXPECT_FALSE(reference);
    EXPECT_FALSE(context_.GetServiceReference<Tool>());
    EXPECT_THROW(context_.GetService(reference), std::invalid_argument);
    EXPECT_THROW(registration.Unregister(), std::logic_error);
    EXPECT_THROW(registration.GetReference(), std::logic_error);
}

TEST_F(Services, LiveOnlyAsLongAsSomebodyHoldsTheirObject) {
    auto object = std::make_shared<Knife>("knife");
    const std::weak_ptr<Knife> watched = object;
    auto registration = context_.RegisterService<Tool>(object);
    object.reset();
    const auto reference = context_.GetServiceReference<Tool>();
    auto held = context_.GetService(reference);
    registration.Unregister();
    EXPECT_EQ(held->name(), "knife");
    held.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(Services, StayWhenTheirRegistrationIsForgotten) {
    { const auto registration = add("knife"); }
    EXPECT_THAT(namesOf(), UnorderedElementsAre("knife"));
}

TEST_F(Services, NeedAnObject) {
    EXPECT_THROW(context_.RegisterService<Tool>(std::shared_ptr<Knife>()), std::invalid_argument);
}

TEST_F(Services, AreNotFoundByAMalformedFilter) {
    add("knife");
    EXPECT_THROW(context_.GetServiceReferences<Tool>("(size=1"), std::invalid_argument);
}

TEST_F(Services, AreNoneForAReferenceThatNamesNone) {
    EXPECT_FALSE(ServiceReference<Tool>());
    EXPECT_THROW(context_.GetService(ServiceReference<Tool>()), std::invalid_argument);
}

TEST_F(Services, KeepTheirInterfaceWhenTheirReferenceIsConverted) {
    add("knife");
    const ServiceReferenceU any = context_.GetServiceReference(us_service_interface_iid<Tool>());
    EXPECT_TRUE(ServiceReference<Sharp>(any));
    EXPECT_FALSE(ServiceReference<std::string>(any));
}

}  // namespace
