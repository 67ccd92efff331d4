#include <aws/core/Aws.h>
#include <dlfcn.h>
#include <unistd.h>

#include <string_view>

// Loaded into a program before its libraries, this tells on standard error when the AWS SDK is shut down, and
// when a client of it goes.

namespace {

void say(std::string_view text) {
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

template <typename Function>
Function* next(const char* symbol) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, symbol));
}

}  // namespace

/// In place of S3Client's destructor.
void clientGoes(void* client) noexcept asm("_ZN3Aws2S38S3ClientD1Ev");

void clientGoes(void* client) noexcept {
    next<void(void*)>("_ZN3Aws2S38S3ClientD1Ev")(client);
    say("a client is gone\n");
}

namespace Aws {

void ShutdownAPI(const SDKOptions& options) {
    next<void(const SDKOptions&)>("_ZN3Aws11ShutdownAPIERKNS_10SDKOptionsE")(options);
    say("the SDK is shut down\n");
}

}  // namespace Aws
