#pragma once

#include <stdexcept>

namespace standin::aws {

/// A request that can't be sent as it is. The message names the fault and shows no header's value.
class UnsendableRequest : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace standin::aws
