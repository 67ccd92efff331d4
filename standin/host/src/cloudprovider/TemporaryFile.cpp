#include "cloudprovider/TemporaryFile.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace storage::cloudprovider {

std::fstream openTemporaryFile() {
    std::string name = std::filesystem::temp_directory_path() / "s3provider-XXXXXX";
    const int descriptor = ::mkstemp(name.data());
    if (descriptor < 0) throw std::system_error(errno, std::generic_category(), "no temporary file");
    ::close(descriptor);
    std::fstream file(name, std::ios::in | std::ios::out | std::ios::binary);
    const int error = errno;
    ::unlink(name.c_str());
    if (!file) throw std::system_error(error, std::generic_category(), "no temporary file");
    return file;
}

}  // namespace storage::cloudprovider
