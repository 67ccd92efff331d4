#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Framework.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>

#include <chrono>
#include <sstream>
#include <string>

namespace testsupport {

/// A framework with its Declarative Services running, the real one or the stand-in. It stops at its end.
class StartedFramework {
public:
    StartedFramework()
        : framework_(cppmicroservices::FrameworkFactory().NewFramework(
              cppmicroservices::FrameworkConfiguration(), &log_)) {
        framework_.Start();
        std::istringstream bundles(DECLARATIVE_SERVICES_BUNDLES);
        for (std::string path; std::getline(bundles, path, ':');)
            start(path);
    }
    StartedFramework(const StartedFramework&) = delete;
    StartedFramework& operator=(const StartedFramework&) = delete;
    ~StartedFramework() { stop(); }

    cppmicroservices::BundleContext context() const { return framework_.GetBundleContext(); }

    cppmicroservices::Bundle install(const std::string& path) { return context().InstallBundles(path).at(0); }

    cppmicroservices::Bundle start(const std::string& path) {
        auto bundle = install(path);
        bundle.Start();
        return bundle;
    }

    void stop() {
        framework_.Stop();
        framework_.WaitForStop(std::chrono::milliseconds(0));
    }

    cppmicroservices::Framework& framework() { return framework_; }

    /// What the framework wrote; not while it may write.
    std::string log() const { return log_.str(); }

private:
    std::ostringstream log_;
    cppmicroservices::Framework framework_;
};

}  // namespace testsupport
