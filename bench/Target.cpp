#include "Target.hpp"

#include <cstdlib>

namespace bench {
namespace {

struct Variable {
    const char* name;
    std::string Target::*field;
};
constexpr Variable variables[] = {
    {"S3PROVIDER_TEST_ENDPOINT", &Target::endpoint},    {"S3PROVIDER_TEST_REGION", &Target::region},
    {"S3PROVIDER_TEST_BUCKET", &Target::bucket},        {"S3PROVIDER_TEST_ACCESS_KEY", &Target::accessKey},
    {"S3PROVIDER_TEST_SECRET_KEY", &Target::secretKey}, {"S3PROVIDER_TEST_CA_FILE", &Target::caFile},
};

}  // namespace

Target targetFromEnvironment() {
    Target target;
    for (const auto& variable : variables) {
        const char* const value =
            std::getenv(variable.name);  // NOLINT(concurrency-mt-unsafe): before any thread
        target.*variable.field = value == nullptr ? "" : value;
    }
    return target;
}

std::map<std::string, std::string> asEnvironment(const Target& target) {
    std::map<std::string, std::string> environment;
    for (const auto& variable : variables)
        environment[variable.name] = target.*variable.field;
    return environment;
}

}  // namespace bench
