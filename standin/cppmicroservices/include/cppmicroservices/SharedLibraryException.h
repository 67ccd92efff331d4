#pragma once

#include "cppmicroservices/Bundle.h"

#include <string>
#include <system_error>
#include <utility>

namespace cppmicroservices {

/// A bundle's library can't be loaded; the text is the loader's.
class SharedLibraryException final : public std::system_error {
public:
    SharedLibraryException(std::error_code code, const std::string& what, Bundle origin)
        : std::system_error(code, what), origin_(std::move(origin)) {}

    Bundle GetBundle() const { return origin_; }

private:
    Bundle origin_;
};

}  // namespace cppmicroservices
