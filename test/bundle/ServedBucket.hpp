#pragma once

#include <foundation/storage/provider/StorageIRI.hpp>
#include <s3server/Server.hpp>
#include <string>

#include "support/plugin/ProviderFiles.hpp"
#include "support/process/CleanEnvironment.hpp"
#include "support/servers/ServerEnvironment.hpp"

namespace testsupport {

/// A server with the bucket s3://served and the object "file" in it, and an environment that leads there.
class ServedBucket {
public:
    ServedBucket() {
        server.createBucket("served");
        server.putObject("served", "file", content);
        for (const auto& [name, value] : leadingTo(server))
            environment_.set(name, value);
    }

    const foundation::storage::provider::StorageIRI iri{u"s3://served"};
    const std::string content = "what the bucket serves";
    s3server::Server server;

private:
    CleanEnvironment clean_;
    Environment environment_;
};

}  // namespace testsupport
