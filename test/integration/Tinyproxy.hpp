#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/process/Process.hpp"
#include "support/process/TemporaryFolder.hpp"

namespace testsupport {

/// Tinyproxy, from Debian's package tinyproxy-bin, on 127.0.0.1 with its log in a temporary folder.
class Tinyproxy {
public:
    struct Options {
        std::uint16_t upstream =
            0;             ///< the proxy on 127.0.0.1 that it asks in turn; 0: it asks the servers itself
        std::string user;  ///< empty: anybody may use it
        std::string password;
    };

    static bool isInstalled();

    /// Returns when it takes connections. Throws std::runtime_error, with its log, when that doesn't come to
    /// be.
    explicit Tinyproxy(Options options);

    std::uint16_t port() const { return port_; }

    /// What it was asked for so far, refused or not: "METHOD TARGET", in order of arrival.
    std::vector<std::string> requests() const;

    std::string log() const;

private:
    void start();
    bool becomesReady();

    const TemporaryFolder folder_{"tinyproxy"};
    const Options options_;
    std::uint16_t port_ = 0;
    std::unique_ptr<BackgroundProcess> process_;
};

}  // namespace testsupport
