#pragma once

#include <stdexcept>

namespace cppmicroservices::service::component {

/// A component and what it is described as don't fit.
class ComponentException final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace cppmicroservices::service::component
