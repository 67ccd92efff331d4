#pragma once

#include "cppmicroservices/Any.h"

#include <iosfwd>
#include <string>
#include <unordered_map>

namespace cppmicroservices {

class Framework;

using FrameworkConfiguration = std::unordered_map<std::string, Any>;

class FrameworkFactory {
public:
    /// A framework with nothing in it, which isn't started. What goes wrong with nobody to throw at, such as
    /// a component that fails when its reference appears, is one line each in the log: std::clog, unless
    /// there is one, which must outlive the framework. The configuration isn't looked at.
    Framework NewFramework(const FrameworkConfiguration& configuration, std::ostream* logger = nullptr);
    Framework NewFramework();
};

}  // namespace cppmicroservices
