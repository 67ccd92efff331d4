#pragma once

#include <any>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace cppmicroservices {

/// A value is asked for as another type than it has.
class BadAnyCastException : public std::bad_cast {
public:
    const char* what() const noexcept override {
        return "cppmicroservices::any_cast: the value has another type";
    }
};

/// A value of any copyable type, or none.
class Any {
public:
    Any() = default;

    template <class T, class = std::enable_if_t<!std::is_same_v<std::decay_t<T>, Any>>>
    Any(T&& value) : value_(std::forward<T>(value)) {}

    bool Empty() const { return !value_.has_value(); }

private:
    template <class T>
    friend const T* any_cast(const Any* value);

    std::any value_;
};

/// The held value, null unless it is a T.
template <class T>
const T* any_cast(const Any* value) {
    return value ? std::any_cast<T>(&value->value_) : nullptr;
}

/// A copy of the held value. Throws BadAnyCastException unless it is a T.
template <class T>
T any_cast(const Any& value) {
    if (const T* held = any_cast<T>(&value)) return *held;
    throw BadAnyCastException();
}

}  // namespace cppmicroservices
