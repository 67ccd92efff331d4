#pragma once

#include "conformance/targets/Target.hpp"

namespace testsupport {

/// The server that the environment names, as docs/integration.md says; a part of its bucket with a prefix of
/// its own, whose objects are removed at the end.
class ConfiguredTarget : public Target {
public:
    static bool isConfigured();

    /// Throws std::runtime_error, naming the variable, when one is missing, and std::invalid_argument when
    /// one can't be understood.
    ConfiguredTarget();
    ~ConfiguredTarget() override;

    Access access() const override { return access_; }
    Quirks quirks() const override { return quirks_; }
    std::unique_ptr<storage::cloudprovider::CloudClient> client() override;

private:
    Access access_;
    Quirks quirks_;
    std::string prefix_;
};

}  // namespace testsupport
