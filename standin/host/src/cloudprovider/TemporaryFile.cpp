#include "cloudprovider/TemporaryFile.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace storage::cloudprovider {

namespace {

constexpr const char* noFile = "no temporary file in the folder that TMPDIR names, else in /tmp";

std::string folder() {
    const char* const chosen =
        std::getenv("TMPDIR");  // NOLINT(concurrency-mt-unsafe): nobody sets it meanwhile
    return chosen != nullptr && *chosen != '\0' ? chosen : "/tmp";
}

}  // namespace

std::fstream openTemporaryFile() {
    std::string name = folder() + "/s3provider-XXXXXX";
    const int descriptor = ::mkstemp(name.data());
    if (descriptor < 0) throw std::system_error(errno, std::generic_category(), noFile);
    ::close(descriptor);
    std::fstream file(name, std::ios::in | std::ios::out | std::ios::binary);
    const int error = errno;
    ::unlink(name.c_str());
    if (!file) throw std::system_error(error, std::generic_category(), noFile);
    return file;
}

}  // namespace storage::cloudprovider
