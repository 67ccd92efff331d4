#pragma once

#include <foundation/storage/provider/IProvider.hpp>
#include <foundation/storage/provider/PhysicalProviderFactory.hpp>
#include <string>

#include "s3server/Server.hpp"
#include "support/CleanEnvironment.hpp"

namespace testsupport {

inline std::string readWhole(foundation::storage::provider::IProvider& provider, const std::u16string& path) {
    const auto file = provider.openRead(path);
    std::string bytes(file->size(), '\0');
    bytes.resize(file->read(0, bytes.data(), bytes.size()));
    return bytes;
}

/// A server with the bucket s3://served and the object "file" in it, and an environment that leads there.
class ServedBucket {
public:
    ServedBucket() {
        server.createBucket("served");
        server.putObject("served", "file", content);
        environment_.set("ZR_AWS_ENDPOINT_OVERRIDE", "http://" + server.endpoint());
        environment_.set("ZR_AWS_SCHEME", "HTTP");
        environment_.set("ZR_AWS_PROXY", "OFF");
        environment_.set("AWS_REGION", "us-east-1");
        environment_.set("AWS_ACCESS_KEY_ID", s3server::defaultCredentials.accessKey);
        environment_.set("AWS_SECRET_ACCESS_KEY", s3server::defaultCredentials.secretKey);
    }

    const foundation::storage::provider::StorageIRI iri{u"s3://served"};
    const std::string content = "what the bucket serves";
    s3server::Server server;

private:
    CleanEnvironment clean_;
    Environment environment_;
};

}  // namespace testsupport
