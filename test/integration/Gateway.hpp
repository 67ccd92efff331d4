#pragma once

#include <memory>
#include <string>
#include <vector>

#include "conformance/targets/Target.hpp"
#include "support/process/Process.hpp"
#include "support/process/TemporaryFolder.hpp"
#include "support/servers/TestCertificate.hpp"

namespace testsupport {

/// Ceph's RADOS Gateway with a cluster of its own below it: one monitor, one store in memory, and the
/// gateway, as child processes that listen on 127.0.0.1 and keep their files in a temporary folder. Its
/// region is eu-west-3, its buckets are also hosts below localHostName.
class Gateway {
public:
    /// The first program it needs that isn't installed; empty when all are.
    static std::string missingProgram();

    /// Returns when requests are answered. Throws std::runtime_error, with the end of what the failed process
    /// said, when that doesn't come to be.
    Gateway();

    /// To a new bucket.
    Access accessToNewBucket(Way way);

private:
    struct Ports {
        unsigned monitor;
        unsigned http;
        unsigned https;
    };

    static Ports freePorts();

    void writeConfiguration();
    void startMonitor();
    void startStore();
    void startGateway();
    void waitUntilItAnswers();

    std::vector<std::string> command(const std::string& program, std::vector<std::string> arguments) const;
    void runToItsEnd(const std::string& program, const std::vector<std::string>& arguments) const;
    std::unique_ptr<BackgroundProcess> inBackground(const std::string& program,
                                                    const std::vector<std::string>& arguments) const;
    std::string endOfLog(const std::string& program) const;

    const TemporaryFolder folder_{"gateway"};
    const Ports ports_ = freePorts();
    TestAuthority authority_;
    unsigned buckets_ = 0;
    std::unique_ptr<BackgroundProcess> monitor_;
    std::unique_ptr<BackgroundProcess> store_;
    std::unique_ptr<BackgroundProcess> gateway_;
};

}  // namespace testsupport
