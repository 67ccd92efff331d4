// Measures what the cloud client costs beside the bare SDK, and the SDK beside bare libcurl, in one run on
// one server: one in this process, or the one that S3PROVIDER_TEST_ENDPOINT and its companions name.

#include <aws/s3/model/PutObjectRequest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <s3server/Server.hpp>
#include <sstream>
#include <stdexcept>

#include "Measurement.hpp"
#include "Report.hpp"
#include "SdkClient.hpp"

namespace {

using namespace bench;

constexpr int roundsOfEach = 5;

Target targetOf(s3server::Server& server) {
    const auto& keys = s3server::defaultCredentials;
    server.createBucket("bench", "eu-west-3");
    return {"http://" + server.endpoint(), "eu-west-3", "bench", keys.accessKey, keys.secretKey, ""};
}

void store(const Aws::S3::S3Client& client, const std::string& bucket, const std::string& key,
           const std::string& bytes) {
    Aws::S3::Model::PutObjectRequest request;
    request.SetBucket(bucket);
    request.SetKey(key);
    request.SetBody(std::make_shared<std::stringstream>(bytes));
    const auto outcome = client.PutObject(request);
    if (!outcome.IsSuccess())
        throw std::runtime_error("can't fill the bucket: " + outcome.GetError().GetMessage());
}

void fillBucket(const Target& target) {
    const SdkLifetime sdk;
    const auto client = makeSdkClient(target);
    store(*client, target.bucket, smallKey, content(smallSize));
    store(*client, target.bucket, largeKey, content(2 * largeSize));
    for (std::size_t i = 0; i < listedKeys; ++i)
        store(*client, target.bucket, keyToList(i), "");
}

/// The subjects take turns, so that whatever else the machine does slows all of them.
void measure(const Workers& workers, const Operation& operation, bool withInstructions, Results& results) {
    const auto each = [&](auto&& action) {
        for (const char* const subject : {"curl", "sdk", "client"})
            action(subject, results[{std::string(operation.name), subject}]);
        if (operation.name == list.name) action("parse", results[{std::string(operation.name), "parse"}]);
    };
    for (int round = 0; round < roundsOfEach; ++round)
        each([&](const char* subject, Measurement& known) { workers.measure(subject, operation, known); });
    each([&](const char* subject, Measurement& known) {
        workers.countAllocations(subject, operation, known);
    });
    if (!withInstructions) return;
    each([&](const char* subject, Measurement& known) {
        workers.countInstructions(subject, operation, known);
    });
}

void run(bool withInstructions) {
    Target target = targetFromEnvironment();
    std::unique_ptr<s3server::Server> server;
    if (!target.isGiven()) {
        server = std::make_unique<s3server::Server>();
        target = targetOf(*server);
    }
    fillBucket(target);
    const Workers workers(target, server.get());
    Results results;
    for (const auto& operation : operations) {
        std::cerr << "bench: " << operation.name << '\n';
        measure(workers, operation, withInstructions, results);
    }
    print(std::cout, results);
}

}  // namespace

int main(int argc, char* argv[]) {
    const bool withInstructions = !(argc == 2 && std::string_view(argv[1]) == "--cpu-only");
    if (argc > 2 || (argc == 2 && withInstructions)) {
        std::cerr << "usage: s3provider_bench [--cpu-only]\n";
        return 2;
    }
    try {
        run(withInstructions);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << "s3provider_bench: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
