#pragma once

#include <memory>
#include <string>

namespace test {

/// What the bundle's component refers to. It is told what becomes of the component's objects.
class Phrase {
public:
    virtual ~Phrase() = default;

    virtual std::string text() const = 0;
    virtual void note(const std::string& event) = 0;
};

/// What the component provides.
class Greeter {
public:
    virtual ~Greeter() = default;

    virtual std::string greet() const = 0;
};

}  // namespace test
