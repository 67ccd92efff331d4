#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "s3server/Server.hpp"
#include "support/process/Process.hpp"
#include "support/servers/ServerEnvironment.hpp"

namespace testsupport {

/// What compilers, their caches and CMake are run with.
inline Variables toolEnvironment() {
    Variables environment{{"LC_ALL", "C"}};
    for (const char* const name : {"PATH", "HOME", "CCACHE_DIR"})
        if (const char* const value = std::getenv(name)) environment.emplace(name, value);
    return environment;
}

/// Runs the command and gives what it printed; the test fails when the command does.
inline std::string output(const std::vector<std::string>& command, const Variables& environment) {
    const auto finished = run(command, environment, "/");
    EXPECT_EQ(finished.status, 0) << command.front() << ":\n" << finished.out << finished.err;
    return finished.out;
}

/// `cmake` with these arguments.
inline void cmake(std::vector<std::string> arguments, Variables more = {}) {
    arguments.insert(arguments.begin(), CMAKE_PROGRAM);
    more.merge(toolEnvironment());
    output(arguments, more);
}

/// An environment in which CMake looks for packages below these prefixes, with ":" between them, and below
/// those that this build has found its own in.
inline Variables lookingIn(const std::string& prefixes) {
    return {{"CMAKE_PREFIX_PATH", prefixes + ":" USED_PREFIXES}};
}

/// Builds the consumer project in the folder, with what is installed below the prefixes, and gives the
/// program.
inline std::string buildConsumer(const std::filesystem::path& folder, const std::string& prefixes) {
    cmake({"-S", CONSUMER_PROJECT, "-B", folder, "-G", "Ninja", "-DCMAKE_CXX_COMPILER=" COMPILER},
          lookingIn(prefixes));
    cmake({"--build", folder});
    return folder / "consumer";
}

/// A server with the bucket s3://shelf and two objects.
class Shelf {
public:
    Shelf() {
        server_.createBucket("shelf");
        server_.putObject("shelf", "apple", "sour");
        server_.putObject("shelf", "pear", "sweet");
    }

    /// An environment that leads there.
    Variables environment() const { return leadingTo(server_); }

private:
    s3server::Server server_;
};

}  // namespace testsupport
