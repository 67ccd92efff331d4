#include <aws/core/Aws.h>
#include <aws/core/auth/AWSCredentialsProvider.h>

#include <mutex>

#include "core/ProcessState.hpp"

namespace standin::aws {
namespace {

Profiles configProfiles() {
    Aws::Config::AWSConfigFileProfileConfigLoader file(Aws::Auth::GetConfigProfileFilename(), true);
    file.Load();
    return file.GetProfiles();
}

struct ApiUses {
    std::mutex mutex;
    std::size_t count = 0;  // of InitAPI() without its ShutdownAPI()
    std::shared_ptr<ProcessState> state;
};

// Left alone at exit: libraries that end late may still call ShutdownAPI().
ApiUses& apiUses() {
    static auto* const uses = new ApiUses;
    return *uses;
}

}  // namespace

ProcessState::ProcessState() : configProfiles(standin::aws::configProfiles()), metadata(metadataEndpoint()) {}

std::shared_ptr<ProcessState> processState() {
    const std::lock_guard lock(apiUses().mutex);
    return apiUses().state;
}

std::shared_ptr<MetadataClient> metadataClient() {
    const auto state = processState();
    if (!state) return std::make_shared<MetadataClient>(metadataEndpoint());
    return {state, &state->metadata};
}

}  // namespace standin::aws

namespace Aws {

using namespace standin::aws;

void InitAPI(const SDKOptions& /*options*/) {
    const std::lock_guard lock(apiUses().mutex);
    if (!apiUses().state) apiUses().state = std::make_shared<ProcessState>();
    ++apiUses().count;
}

void ShutdownAPI(const SDKOptions& /*options*/) {
    const std::lock_guard lock(apiUses().mutex);
    if (apiUses().count > 0 && --apiUses().count == 0) apiUses().state.reset();
}

}  // namespace Aws
