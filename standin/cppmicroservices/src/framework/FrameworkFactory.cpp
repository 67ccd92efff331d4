#include "cppmicroservices/FrameworkFactory.h"

#include "cppmicroservices/Framework.h"
#include "framework/FrameworkCore.hpp"

#include <iostream>
#include <memory>

namespace cppmicroservices {

Framework FrameworkFactory::NewFramework(const FrameworkConfiguration&, std::ostream* logger) {
    return Framework(std::make_shared<detail::FrameworkCore>(logger ? *logger : std::clog));
}

Framework FrameworkFactory::NewFramework() {
    return NewFramework({});
}

}  // namespace cppmicroservices
