#include "conformance/targets/ConfiguredTarget.hpp"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <random>
#include <stdexcept>

#include "conformance/targets/PrefixedCloudClient.hpp"

namespace testsupport {

namespace {

using storage::cloudprovider::CloudClient;

const std::string variables = "S3PROVIDER_TEST_";

std::string optional(const std::string& name, const std::string& otherwise = {}) {
    const char* const value = std::getenv((variables + name).c_str());  // NOLINT(concurrency-mt-unsafe)
    return value && *value ? value : otherwise;
}

std::string required(const std::string& name) {
    auto value = optional(name);
    if (value.empty()) throw std::runtime_error(variables + name + " isn't set");
    return value;
}

// Others may be testing in the same bucket.
std::string prefixOfItsOwn() {
    std::random_device random;
    return "conformance-" + std::to_string(random()) + "-" + std::to_string(random()) + "/";
}

void removeAll(CloudClient& client) {
    for (;;) {
        std::string token;
        const auto entries = client.list("", token, {"", 0});
        if (entries.empty()) return;
        for (const auto& entry : entries)
            client.remove(entry.name);
    }
}

}  // namespace

bool ConfiguredTarget::isConfigured() {
    return !optional("ENDPOINT").empty();
}

ConfiguredTarget::ConfiguredTarget()
    : access_{required("ENDPOINT"),
              optional("REGION", "us-east-1"),
              required("BUCKET"),
              {required("ACCESS_KEY"), required("SECRET_KEY"), optional("SESSION_TOKEN")},
              optional("CA_FILE")},
      quirks_(parseQuirks(optional("QUIRKS"))),
      prefix_(prefixOfItsOwn()) {}

ConfiguredTarget::~ConfiguredTarget() {
    try {
        removeAll(*client());
    } catch (const std::exception& failure) {
        std::cerr << "objects may be left below " << prefix_ << ": " << failure.what() << '\n';
    }
}

std::unique_ptr<CloudClient> ConfiguredTarget::client() {
    return std::make_unique<PrefixedCloudClient>(cloudClient(access_), prefix_);
}

}  // namespace testsupport
