// Opens a bucket by its IRI, as a host does, through the plug-in's bundle, on an S3 server in this process;
// moves files of this machine into it and back, and compares every byte. Exit status 0 when all checks pass.

#include <iostream>

#include "FileSteps.hpp"
#include "Files.hpp"
#include "Report.hpp"
#include "ServedBucket.hpp"
#include "framework/ServiceFramework.hpp"

namespace {

using foundation::storage::provider::IProvider;
using foundation::storage::provider::StorageIRI;

bool use(IProvider& bucket, s3server::Server& server) {
    demo::Report report(server);
    const auto files = demo::filesBelow("/usr/include", 300);
    fillBucket(bucket, report, files);
    lookAround(bucket, report, files);
    readBack(bucket, report, files);
    readRange(bucket, report, demo::largeFile());
    removeEverything(bucket, report);
    return report.verdict();
}

int fail(const std::exception& failure) {
    std::cerr << "demo: " << failure.what() << "\n";
    return 1;
}

int openOn(s3server::Server& server) {
    // Ends after the handler below: what that is given may be the bundle's.
    s3vfs::ServiceFramework framework;
    try {
        const auto bundle = framework.bundle();
        std::cout << "The bundle " << bundle.GetSymbolicName() << " is " << bundle.GetLocation() << ".\n";
        const auto bucket = framework.providerFactory()->createProvider(StorageIRI(u"s3://demo/"));
        return use(*bucket, server) ? 0 : 1;
    } catch (const std::exception& failure) {
        return fail(failure);
    }
}

}  // namespace

int main() {
    try {
        demo::ServedBucket served;
        return openOn(served.server);
    } catch (const std::exception& failure) {
        return fail(failure);
    }
}
