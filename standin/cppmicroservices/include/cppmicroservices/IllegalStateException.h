#pragma once

#include <stdexcept>

namespace cppmicroservices {

/// A context is used while its bundle or framework isn't running.
class IllegalStateException final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace cppmicroservices
