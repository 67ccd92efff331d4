#pragma once

#include <memory>

#include "core/CurlGlobal.hpp"
#include "core/MetadataClient.hpp"
#include "core/ProfileFile.hpp"

namespace standin::aws {

/// What all clients of a process share, made by the first InitAPI() from the environment of that time.
struct ProcessState {
    /// Reads the config file.
    ProcessState();

    const CurlGlobal curl;
    const Profiles configProfiles;
    MetadataClient metadata;
};

/// Null before InitAPI() and after the last ShutdownAPI(). Any thread.
std::shared_ptr<ProcessState> processState();

/// The client that all of a process share, and so the place where the first InitAPI() found the service.
/// Without InitAPI() one of its own. Any thread.
std::shared_ptr<MetadataClient> metadataClient();

}  // namespace standin::aws
