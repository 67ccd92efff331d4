#pragma once

#include <map>
#include <string>
#include <vector>

namespace testsupport {

struct Finished {
    int status;  ///< exit status; 128 + signal when it was killed by one
    std::string out;
    std::string err;
};

/// Runs a program to its end in `folder` with exactly this environment and no input. Throws
/// std::system_error when it can't be started.
Finished run(const std::vector<std::string>& command, const std::map<std::string, std::string>& environment,
             const std::string& folder);

}  // namespace testsupport
