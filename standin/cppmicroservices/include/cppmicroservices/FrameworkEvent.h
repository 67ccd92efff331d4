#pragma once

#include <cstdint>

namespace cppmicroservices {

/// How waiting for a framework's end came out.
class FrameworkEvent {
public:
    enum Type : std::uint32_t { FRAMEWORK_STOPPED = 0x40, FRAMEWORK_WAIT_TIMEDOUT = 0x200 };

    explicit FrameworkEvent(Type type) : type_(type) {}

    Type GetType() const { return type_; }

private:
    Type type_;
};

}  // namespace cppmicroservices
