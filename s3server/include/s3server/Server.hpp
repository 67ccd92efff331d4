#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "s3server/Fault.hpp"
#include "s3server/Options.hpp"
#include "s3server/RequestRecord.hpp"

namespace s3server {

class Listener;
class Service;
class FaultPlan;
class RequestLog;

/// An S3 server in this process that keeps everything in memory. It serves from the constructor to stop()
/// or the destructor, one thread a connection. All members but the destructor may be called from any thread.
class Server {
public:
    /// Throws std::runtime_error if an address can't be bound or a TLS file can't be used.
    explicit Server(const Options& options = {});
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    std::uint16_t port() const;
    /// "127.0.0.1:PORT", without a scheme.
    std::string endpoint() const;
    /// Where control requests are taken, in the same form; empty if nowhere.
    std::string controlEndpoint() const;
    /// Ends all connections, also those in the middle of an answer, and returns when they are gone. What is
    /// stored and recorded stays readable.
    void stop();

    /// Throws std::invalid_argument if the bucket exists, and for a name or region that S3 refuses, too.
    void createBucket(const std::string& name, const std::string& region = "us-east-1");
    /// Throws std::invalid_argument if there is no such bucket, std::runtime_error beyond
    /// Options::memoryLimit.
    void putObject(const std::string& bucket, const std::string& key, std::string bytes);
    std::optional<std::string> object(const std::string& bucket, const std::string& key) const;
    /// In the order of their bytes; none for a bucket that doesn't exist.
    std::vector<std::string> keys(const std::string& bucket) const;
    /// Multipart uploads that were neither completed nor aborted.
    std::size_t openUploads(const std::string& bucket) const;
    /// How many bytes count towards Options::memoryLimit. Those of a request may count until its connection
    /// has gone on to the next.
    std::uint64_t memoryUsed() const;

    /// The latest, Options::rememberedRequests of them, in the order in which they were answered. A request
    /// is recorded before its answer leaves.
    std::vector<RequestRecord> requests() const;
    /// Of all requests since the start, or since they were forgotten.
    RequestCounts requestCounts() const;
    void forgetRequests();
    /// Connections accepted since the start.
    std::size_t connections() const;

    /// Several faults may wait; a request suffers the first one planned that matches it when it has arrived.
    void plan(Fault fault);
    /// All of them at once: no request meets some of them only.
    void plan(std::vector<Fault> faults);
    /// What is still to come, in the order planned, with what is left of each fault's skips and times.
    std::vector<Fault> plannedFaults() const;
    /// How many more requests the faults planned so far are for.
    std::size_t plannedFaultsLeft() const;
    /// Forgets what is still to come, and lets the requests that a stall holds be answered.
    void resetFaults();
    /// Lets the requests that a stall holds be answered; what is planned stays.
    void releaseStalled();

private:
    const std::unique_ptr<Service> service_;
    const std::unique_ptr<FaultPlan> faults_;
    const std::unique_ptr<RequestLog> log_;
    const std::unique_ptr<Listener> listener_;
    const std::unique_ptr<Listener> control_;
};

}  // namespace s3server
