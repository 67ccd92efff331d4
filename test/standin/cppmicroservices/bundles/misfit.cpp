#include "bundles/Greeter.hpp"

#include <cppmicroservices/servicecomponent/detail/ComponentInstanceImpl.hpp>

#include <array>
#include <tuple>
#include <utility>

namespace {

using cppmicroservices::service::component::ComponentContext;
using cppmicroservices::service::component::detail::ComponentInstance;
using cppmicroservices::service::component::detail::ComponentInstanceImpl;

/// Is no test::Greeter, whatever its manifest says.
class Misfit {
public:
    explicit Misfit(std::shared_ptr<test::Phrase> phrase) : phrase_(std::move(phrase)) {
        phrase_->note("made");
    }
    ~Misfit() { phrase_->note("destroyed"); }

    void Activate(const std::shared_ptr<ComponentContext>&) { phrase_->note("activated"); }

private:
    std::shared_ptr<test::Phrase> phrase_;
};

using Instance = ComponentInstanceImpl<Misfit, std::tuple<Misfit>, std::shared_ptr<test::Phrase>>;

}  // namespace

extern "C" {

ComponentInstance* NewInstance_test_Misfit() {
    return new Instance(std::array<std::string, 1>{"phrase"});
}

void DeleteInstance_test_Misfit(ComponentInstance* instance) {
    delete instance;
}

void _us_set_bundle_context_instance_misfit(void*) {}
}
