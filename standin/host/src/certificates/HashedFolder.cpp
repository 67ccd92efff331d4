#include "certificates/HashedFolder.hpp"

#include <filesystem>
#include <string>
#include <system_error>

namespace foundation::certificates {

namespace {

bool isHashedName(const std::string& name) {
    constexpr std::size_t digits = 8;
    return name.size() > digits + 1 && name.find_first_not_of("0123456789abcdef") == digits &&
           name[digits] == '.' && name.find_first_not_of("0123456789", digits + 1) == std::string::npos;
}

}  // namespace

bool isHashedFolder(std::string_view path) {
    using std::filesystem::directory_iterator;
    std::error_code error;
    for (directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error))
        if (isHashedName(entry->path().filename())) return true;
    return false;
}

}  // namespace foundation::certificates
