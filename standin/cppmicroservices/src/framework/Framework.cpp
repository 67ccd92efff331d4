#include "cppmicroservices/Framework.h"

#include "cppmicroservices/FrameworkEvent.h"
#include "cppmicroservices/FrameworkFactory.h"
#include "framework/BundleContextPrivate.hpp"
#include "framework/FrameworkCore.hpp"

#include <iostream>
#include <memory>
#include <utility>

namespace cppmicroservices {

Framework::Framework(std::shared_ptr<detail::FrameworkCore> core) : core_(std::move(core)) {}

void Framework::Init() {
    core_->init();
}

void Framework::Start() {
    core_->start();
}

void Framework::Stop() {
    core_->stop();
}

FrameworkEvent Framework::WaitForStop(const std::chrono::milliseconds& timeout) {
    return FrameworkEvent(core_->waitForStop(timeout) ? FrameworkEvent::FRAMEWORK_STOPPED
                                                      : FrameworkEvent::FRAMEWORK_WAIT_TIMEDOUT);
}

Bundle::State Framework::GetState() const {
    return core_->state();
}

BundleContext Framework::GetBundleContext() const {
    return BundleContext(std::make_shared<BundleContextPrivate>(core_));
}

Framework FrameworkFactory::NewFramework(const FrameworkConfiguration&, std::ostream* logger) {
    return Framework(std::make_shared<detail::FrameworkCore>(logger ? *logger : std::clog));
}

Framework FrameworkFactory::NewFramework() {
    return NewFramework({});
}

}  // namespace cppmicroservices
