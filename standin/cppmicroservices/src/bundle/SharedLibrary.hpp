#pragma once

#include <filesystem>
#include <string>

namespace cppmicroservices::detail {

/// A loaded shared library. It stays loaded until the process ends: objects that it made may be anywhere, and
/// the framework proper doesn't unload either.
class SharedLibrary {
public:
    /// The path is absolute, since the loader looks for bare names elsewhere. Throws std::runtime_error with
    /// the loader's reason. Its symbols aren't seen by others.
    explicit SharedLibrary(const std::filesystem::path& path);

    /// Throws std::runtime_error when the library exports no such function.
    template <class Function>
    Function* function(const std::string& name) const {
        return reinterpret_cast<Function*>(symbol(name));
    }

private:
    void* symbol(const std::string& name) const;

    std::filesystem::path path_;
    void* handle_;
};

}  // namespace cppmicroservices::detail
