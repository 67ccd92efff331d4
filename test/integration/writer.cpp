#include <aws/core/Aws.h>

#include <fl/i18n.hpp>
#include <iostream>

#include "S3ProviderFactoryV2.hpp"

// usage: writer BUCKET
// Opens the bucket through the plug-in and writes an empty file for each name in its input, one a line.
// Answers each with the line "written", or with what went wrong.

namespace {

using storage::s3provider::S3ProviderFactoryV2;

std::string write(S3ProviderFactoryV2::IProvider& provider, const std::string& name) {
    try {
        provider.openWrite(fl::i18n::to_ustring(name))->commit();
        return "written";
    } catch (const std::exception& failure) {
        return failure.what();
    }
}

void serve(const std::string& bucket) {
    S3ProviderFactoryV2 factory(nullptr);
    const auto provider =
        factory.createProvider(S3ProviderFactoryV2::StorageIRI(u"s3://" + fl::i18n::to_ustring(bucket)));
    for (std::string name; std::getline(std::cin, name);)
        std::cout << write(*provider, name) << std::endl;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) return 2;
    const Aws::SDKOptions options;
    Aws::InitAPI(options);
    serve(arguments[1]);
    Aws::ShutdownAPI(options);
    return 0;
}
