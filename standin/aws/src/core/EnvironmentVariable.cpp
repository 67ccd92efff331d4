#include "core/EnvironmentVariable.hpp"

#include <cstdlib>

namespace standin::aws {

std::string environmentVariable(const char* name) {
    const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): by contract
    return value != nullptr ? value : "";
}

}  // namespace standin::aws
