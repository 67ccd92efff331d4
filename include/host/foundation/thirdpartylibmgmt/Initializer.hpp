#pragma once

namespace foundation::thirdpartylibmgmt {

/// Keeps a third-party library initialised for as long as somebody holds it. It is a service, registered with
/// the property "thirdpartylibmgmt-library-name", such as "aws-sdk-cpp".
class Initializer {
public:
    Initializer() = default;
    Initializer(const Initializer&) = delete;
    Initializer& operator=(const Initializer&) = delete;

    virtual ~Initializer() = default;
};

}  // namespace foundation::thirdpartylibmgmt
