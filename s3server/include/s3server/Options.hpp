#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "s3server/RequestRecord.hpp"

namespace s3server {

/// One pair of keys the server accepts. Requests signed with it must carry exactly the session token given
/// here, or none if it is empty.
struct Credentials {
    std::string accessKey;
    std::string secretKey;
    std::string sessionToken;
};

/// The pair a server accepts when nothing else is said.
inline const Credentials defaultCredentials{"s3server-access-key", "s3server-secret-key", ""};

/// PEM files; the chain starts with the server's own certificate.
struct TlsFiles {
    std::string certificateChainFile;
    std::string privateKeyFile;
};

/// Three quarters of the machine's memory, in bytes.
std::uint64_t defaultMemoryLimit();

struct Options {
    std::string address = "127.0.0.1";
    /// 0 lets the system choose.
    std::uint16_t port = 0;
    /// Where control requests are taken, over HTTP and from everybody who can connect: another process's way
    /// to Server::plan() and its like. Without a port, nowhere; 0 lets the system choose.
    std::optional<std::uint16_t> controlPort;
    std::string controlAddress = "127.0.0.1";
    std::vector<Credentials> credentials{defaultCredentials};
    /// BUCKET.NAME addresses a bucket for each NAME of this list; NAME alone, and every host that is not
    /// listed, addresses buckets by the path. The regional names of amazonaws.com are always known.
    std::vector<std::string> hostNames{"localhost", "s3.amazonaws.com"};
    /// HTTPS instead of HTTP.
    std::optional<TlsFiles> tls;
    /// Off: anybody may do anything, and no signature is looked at.
    bool checkSignatures = true;
    /// The time that signatures are judged by, and of everything the server dates. Called from any thread.
    std::function<std::chrono::system_clock::time_point()> clock = std::chrono::system_clock::now;
    /// The most bytes for objects, parts of uploads under way and bodies that are being received, together
    /// with their keys and headers; what would go beyond is refused with status 507, InsufficientStorage.
    std::uint64_t memoryLimit = defaultMemoryLimit();
    /// How many requests Server::requests() tells of.
    std::size_t rememberedRequests = 10'000;
    /// Told of each request when its answer is about to be sent; one call at a time, from any thread.
    std::function<void(const RequestRecord&)> onRequest;
};

}  // namespace s3server
