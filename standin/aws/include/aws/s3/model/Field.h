#pragma once

#include <utility>

namespace Aws::S3::Model {

/// A request's field: its value, and whether it was ever set. Set to an empty value it is set.
template <typename T>
class Field {
public:
    void set(T value) {
        value_ = std::move(value);
        isSet_ = true;
    }
    const T& get() const { return value_; }
    bool isSet() const { return isSet_; }

private:
    T value_{};
    bool isSet_ = false;
};

}  // namespace Aws::S3::Model
