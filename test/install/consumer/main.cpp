// Prints the names of what lies at the root of the storage that the argument, an ASCII IRI, names.
#include <aws/core/Aws.h>
#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Framework.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>

#include <chrono>
#include <foundation/storage/provider/PhysicalProviderFactory.hpp>
#include <foundation/thirdpartylibmgmt/Initializer.hpp>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

using cppmicroservices::BundleContext;
using foundation::storage::provider::PhysicalProviderFactory;
using foundation::storage::provider::StorageIRI;
using foundation::thirdpartylibmgmt::Initializer;

namespace {

class AwsSdk : public Initializer {
public:
    AwsSdk() { Aws::InitAPI(options_); }
    ~AwsSdk() override { Aws::ShutdownAPI(options_); }

private:
    Aws::SDKOptions options_;
};

// The files' names are separated by colons, and some may be empty.
void startBundles(BundleContext context) {
    std::istringstream files(BUNDLES);
    for (std::string file; std::getline(files, file, ':');)
        if (!file.empty()) context.InstallBundles(file).at(0).Start();
}

void list(BundleContext context, const StorageIRI& iri) {
    const auto reference = context.GetServiceReference<PhysicalProviderFactory>();
    const auto factory = context.GetService(reference);
    for (const auto& entry : factory->createProvider(iri)->list(u"/"))
        std::cout << std::string(entry.name.begin(), entry.name.end()) << "\n";
}

}  // namespace

int main(int, char** argv) {
    const std::string iri = argv[1];
    const auto sdk = std::make_shared<AwsSdk>();
    auto framework = cppmicroservices::FrameworkFactory().NewFramework();
    framework.Start();
    auto context = framework.GetBundleContext();
    startBundles(context);
    context.RegisterService<Initializer>(sdk,
                                         {{"thirdpartylibmgmt-library-name", std::string("aws-sdk-cpp")}});
    list(context, StorageIRI(std::u16string(iri.begin(), iri.end())));
    framework.Stop();
    framework.WaitForStop(std::chrono::milliseconds::zero());
}
