#include "bundles/Greeter.hpp"

#include <cppmicroservices/servicecomponent/detail/ComponentInstanceImpl.hpp>

#include <array>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace {

using cppmicroservices::service::component::ComponentContext;
using cppmicroservices::service::component::detail::ComponentInstance;
using cppmicroservices::service::component::detail::ComponentInstanceImpl;

/// Fails to be made out of the phrase "fail", and to be deactivated with the phrase "stay".
class PoliteGreeter : public test::Greeter {
public:
    explicit PoliteGreeter(std::shared_ptr<test::Phrase> phrase) : phrase_(std::move(phrase)) {
        if (phrase_->text() == "fail") throw std::runtime_error("nothing polite to say");
        phrase_->note("made");
    }
    ~PoliteGreeter() override { phrase_->note("destroyed"); }

    void Activate(const std::shared_ptr<ComponentContext>&) { phrase_->note("activated"); }
    void Deactivate(const std::shared_ptr<ComponentContext>& context) {
        if (phrase_->text() == "stay") throw std::runtime_error("a guest is here");
        phrase_->note(context->GetBundleContext() ? "deactivated" : "deactivated too late");
    }

    std::string greet() const override { return phrase_->text() + "!"; }

private:
    std::shared_ptr<test::Phrase> phrase_;
};

using Instance =
    ComponentInstanceImpl<PoliteGreeter, std::tuple<test::Greeter>, std::shared_ptr<test::Phrase>>;

}  // namespace

extern "C" {

ComponentInstance* NewInstance_test_PoliteGreeter() {
    return new Instance(std::array<std::string, 1>{"phrase"});
}

void DeleteInstance_test_PoliteGreeter(ComponentInstance* instance) {
    delete instance;
}

void _us_set_bundle_context_instance_greeter(void*) {}
}
