#include <cppmicroservices/ServiceReference.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <cppmicroservices/servicecomponent/runtime/ServiceComponentRuntime.hpp>

#include <memory>
#include <string>

#include "Phrases.hpp"
#include "support/process/StartedFramework.hpp"

namespace {

using namespace cppmicroservices;
using cppmicroservices::service::component::runtime::ServiceComponentRuntime;
using cppmicroservices::service::component::runtime::dto::ComponentConfigurationDTO;
using cppmicroservices::service::component::runtime::dto::ComponentState;
using test::greeting;
using test::registerPhrase;
using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;

class ComponentLife : public testing::Test {
protected:
    ComponentConfigurationDTO configuration() {
        const auto runtime = context_.GetService(context_.GetServiceReference<ServiceComponentRuntime>());
        const auto descriptions = runtime->GetComponentDescriptionDTOs({bundle_});
        return runtime->GetComponentConfigurationDTOs(descriptions.at(0)).at(0);
    }

    testsupport::StartedFramework framework_;
    BundleContext context_ = framework_.context();
    Bundle bundle_ = framework_.start(GREETER_BUNDLE);
    std::shared_ptr<test::Journal> journal_ = std::make_shared<test::Journal>();
};

TEST_F(ComponentLife, WaitsForItsReference) {
    EXPECT_EQ(greeting(context_), "nobody");
    registerPhrase(context_, "hello");
    EXPECT_EQ(greeting(context_), "hello!");
}

TEST_F(ComponentLife, TakesAServiceThatIsThereAlready) {
    bundle_.Stop();
    registerPhrase(context_, "hello");
    bundle_.Start();
    EXPECT_EQ(greeting(context_), "hello!");
}

TEST_F(ComponentLife, TakesNoServiceThatItsTargetDoesNotLetThrough) {
    registerPhrase(context_, "bonjour", journal_, "fr");
    EXPECT_EQ(greeting(context_), "nobody");
    EXPECT_THAT(journal_->events(), ElementsAre());
}

TEST_F(ComponentLife, IsRegisteredWithTheManifestsProperties) {
    registerPhrase(context_, "hello");
    const auto reference = context_.GetServiceReference<test::Greeter>();
    EXPECT_EQ(any_cast<std::string>(reference.GetProperty("manner")), "polite");
    EXPECT_EQ(any_cast<std::string>(reference.GetProperty("component.name")), "test::PoliteGreeter");
    EXPECT_EQ(context_.GetServiceReferences<test::Greeter>("(manner=polite)").size(), 1u);
    EXPECT_EQ(context_.GetServiceReferences<test::Greeter>("(manner=rude)").size(), 0u);
}

TEST_F(ComponentLife, GoesWhenItsReferenceGoes) {
    auto phrase = registerPhrase(context_, "hello", journal_);
    EXPECT_EQ(greeting(context_), "hello!");
    phrase.Unregister();
    EXPECT_EQ(greeting(context_), "nobody");
    EXPECT_THAT(journal_->events(), ElementsAre("made", "activated", "deactivated", "destroyed"));
}

TEST_F(ComponentLife, ComesAnewWhenItsReferenceReturns) {
    auto first = registerPhrase(context_, "hello", journal_);
    EXPECT_EQ(greeting(context_), "hello!");
    first.Unregister();
    registerPhrase(context_, "good evening", journal_);
    EXPECT_EQ(greeting(context_), "good evening!");
    EXPECT_THAT(journal_->events(),
                ElementsAre("made", "activated", "deactivated", "destroyed", "made", "activated"));
}

TEST_F(ComponentLife, KeepsItsServiceWhenABetterOneComes) {
    registerPhrase(context_, "hello", journal_);
    EXPECT_EQ(greeting(context_), "hello!");
    context_.RegisterService<test::Phrase>(std::make_shared<test::KnownPhrase>("welcome", journal_),
                                           {{"language", std::string("en")}, {"service.ranking", 9}});
    EXPECT_EQ(greeting(context_), "hello!");
    EXPECT_THAT(journal_->events(), ElementsAre("made", "activated"));
}

TEST_F(ComponentLife, TakesAnotherServiceWhenItsOwnGoes) {
    auto first = registerPhrase(context_, "hello", journal_);
    EXPECT_EQ(greeting(context_), "hello!");
    registerPhrase(context_, "welcome", journal_);
    first.Unregister();
    EXPECT_EQ(greeting(context_), "welcome!");
}

TEST_F(ComponentLife, LeavesItsObjectToWhomeverHoldsIt) {
    auto phrase = registerPhrase(context_, "hello", journal_);
    auto held = context_.GetService(context_.GetServiceReference<test::Greeter>());
    phrase.Unregister();
    EXPECT_EQ(held->greet(), "hello!");
    EXPECT_THAT(journal_->events(), ElementsAre("made", "activated", "deactivated"));
    bundle_.Uninstall();
    EXPECT_EQ(held->greet(), "hello!");
    held.reset();
    EXPECT_THAT(journal_->events(), Contains("destroyed"));
}

TEST_F(ComponentLife, EndsWithItsBundle) {
    registerPhrase(context_, "hello", journal_);
    EXPECT_EQ(greeting(context_), "hello!");
    bundle_.Stop();
    EXPECT_EQ(greeting(context_), "nobody");
    EXPECT_THAT(journal_->events(), ElementsAre("made", "activated", "deactivated", "destroyed"));
}

TEST_F(ComponentLife, EndsWithItsFramework) {
    registerPhrase(context_, "hello", journal_);
    EXPECT_EQ(greeting(context_), "hello!");
    framework_.stop();
    EXPECT_THAT(journal_->events(), ElementsAre("made", "activated", "deactivated", "destroyed"));
}

TEST_F(ComponentLife, ServesNobodyWhenItsObjectCannotBeMade) {
    auto bad = registerPhrase(context_, "fail", journal_);
    EXPECT_THAT(greeting(context_), testing::AnyOf("nobody", "broken"));
    EXPECT_EQ(configuration().state, ComponentState::SATISFIED);
    bad.Unregister();
    registerPhrase(context_, "hello", journal_);
    EXPECT_EQ(greeting(context_), "hello!");
}

TEST_F(ComponentLife, IsDescribedAsTheManifestDoes) {
    const auto description = configuration().description;
    EXPECT_EQ(description.name, "test::PoliteGreeter");
    EXPECT_EQ(description.implementationClass, "test::PoliteGreeter");
    EXPECT_EQ(description.bundle.symbolicName, "greeter");
    EXPECT_EQ(description.scope, "singleton");
    EXPECT_THAT(description.serviceInterfaces, ElementsAre("test::Greeter"));
    EXPECT_EQ(any_cast<std::string>(description.properties.at("manner")), "polite");
    ASSERT_THAT(description.references, SizeIs(1));
    EXPECT_EQ(description.references[0].name, "phrase");
    EXPECT_EQ(description.references[0].interfaceName, "test::Phrase");
    EXPECT_EQ(description.references[0].cardinality, "1..1");
    EXPECT_EQ(description.references[0].policy, "static");
    EXPECT_EQ(description.references[0].policyOption, "reluctant");
    EXPECT_EQ(description.references[0].target, "(language=en)");
}

TEST_F(ComponentLife, TellsWhatItMisses) {
    const auto waiting = configuration();
    EXPECT_EQ(waiting.state, ComponentState::UNSATISFIED_REFERENCE);
    ASSERT_THAT(waiting.unsatisfiedReferences, SizeIs(1));
    EXPECT_EQ(waiting.unsatisfiedReferences[0].name, "phrase");
    EXPECT_EQ(waiting.unsatisfiedReferences[0].target, "(language=en)");
    EXPECT_THAT(waiting.satisfiedReferences, SizeIs(0));
}

TEST_F(ComponentLife, TellsWhatItIsBoundTo) {
    const auto phrase = registerPhrase(context_, "hello");
    EXPECT_EQ(greeting(context_), "hello!");
    const auto active = configuration();
    EXPECT_EQ(active.state, ComponentState::ACTIVE);
    EXPECT_THAT(active.unsatisfiedReferences, SizeIs(0));
    ASSERT_THAT(active.satisfiedReferences, SizeIs(1));
    EXPECT_EQ(active.satisfiedReferences[0].name, "phrase");
    ASSERT_THAT(active.satisfiedReferences[0].boundServices, SizeIs(1));
    EXPECT_EQ(active.satisfiedReferences[0].boundServices[0].id,
              static_cast<unsigned long>(any_cast<long>(phrase.GetReference().GetProperty("service.id"))));
}

}  // namespace
