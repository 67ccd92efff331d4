#include <aws/core/Aws.h>
#include <dlfcn.h>
#include <unistd.h>

#include <string_view>

// Loaded into a program before its libraries, this tells on standard error when the AWS SDK is shut down.

namespace {

void say(std::string_view text) {
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

}  // namespace

namespace Aws {

void ShutdownAPI(const SDKOptions& options) {
    using Function = void(const SDKOptions&);
    auto* const next =
        reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, "_ZN3Aws11ShutdownAPIERKNS_10SDKOptionsE"));
    next(options);
    say("the SDK is shut down\n");
}

}  // namespace Aws
