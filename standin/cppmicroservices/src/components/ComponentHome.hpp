#pragma once

#include "cppmicroservices/BundleContext.h"
#include "framework/FailureLog.hpp"
#include "services/ServiceRegistry.hpp"

#include <memory>

namespace cppmicroservices::detail {

/// Where a component of a started bundle belongs.
struct ComponentHome {
    unsigned long componentId;  // counts from 1 in a framework
    long bundleId;
    BundleContext bundle;
    std::shared_ptr<ServiceRegistry> registry;
    std::shared_ptr<FailureLog> log;
};

}  // namespace cppmicroservices::detail
