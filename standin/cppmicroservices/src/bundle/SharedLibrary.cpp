#include "bundle/SharedLibrary.hpp"

#include <dlfcn.h>

#include <stdexcept>

namespace cppmicroservices::detail {

namespace {

std::string loaderError() {
    const char* error = dlerror();  // NOLINT(concurrency-mt-unsafe): glibc keeps one a thread
    return error ? error : "unknown error";
}

}  // namespace

SharedLibrary::SharedLibrary(const std::filesystem::path& path)
    : path_(path), handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!handle_) throw std::runtime_error("can't load " + path.string() + ": " + loaderError());
}

void* SharedLibrary::symbol(const std::string& name) const {
    void* address = dlsym(handle_, name.c_str());
    if (!address) throw std::runtime_error(path_.string() + " exports no function " + name);
    return address;
}

}  // namespace cppmicroservices::detail
