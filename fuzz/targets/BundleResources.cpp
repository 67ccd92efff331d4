#include "bundle/Manifest.hpp"

#include <stdexcept>
#include <string>

#include "FuzzTarget.hpp"

using namespace cppmicroservices::detail;

namespace {

void check(const Manifest& manifest) {
    fuzz::require(!manifest.symbolicName.empty(), "a bundle has a name");
    fuzz::require(manifest.headers.count("bundle.symbolic_name") == 1, "its name is among the headers");
    for (const ComponentDescription& component : manifest.components) {
        fuzz::require(!component.implementationClass.empty(), "a component has a class");
        for (const ReferenceDescription& reference : component.references)
            fuzz::require(!reference.interfaceName.empty(), "a reference has an interface");
    }
}

template <class Read>
void checkUnlessRefused(const Read& read) {
    try {
        check(read());
    } catch (const std::runtime_error& refusal) {
        fuzz::require(*refusal.what() != '\0', "a refusal has a reason");
    }
}

}  // namespace

// The archive in a library, and, as the checksum keeps most changes out of it, the manifest in that.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::textOf(data, size);
    checkUnlessRefused([bytes] { return readManifest(bytes); });
    checkUnlessRefused([bytes] { return parseManifest({"bundle", std::string(bytes)}); });
    return 0;
}
