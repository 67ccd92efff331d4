#include "s3server/Server.hpp"

#include <stdexcept>

#include "faults/Control.hpp"
#include "faults/FaultPlan.hpp"
#include "faults/RequestLog.hpp"
#include "http/Listener.hpp"
#include "http/Session.hpp"
#include "operations/Operations.hpp"
#include "operations/S3Error.hpp"
#include "operations/Service.hpp"
#include "text/Digest.hpp"
#include "text/Encoding.hpp"

namespace s3server {
namespace {

Options forControl(Options options) {
    options.address = options.controlAddress;
    options.port = *options.controlPort;
    options.tls.reset();
    return options;
}

}  // namespace

Server::Server(const Options& options)
    : service_(std::make_unique<Service>(options)),
      faults_(std::make_unique<FaultPlan>()),
      log_(std::make_unique<RequestLog>(options.onRequest, options.rememberedRequests)),
      listener_(
          std::make_unique<Listener>(options,
                                     [this](Wire& wire, std::uint64_t connection) {
                                         serveConnection(wire, {*service_, *faults_, *log_}, connection);
                                     })),
      control_(options.controlPort ? std::make_unique<Listener>(forControl(options),
                                                                [this](Wire& wire, std::uint64_t) {
                                                                    serveControl(wire, {*faults_, *log_});
                                                                })
                                   : nullptr) {}

Server::~Server() {
    stop();
}

std::uint16_t Server::port() const {
    return listener_->port();
}

std::string Server::endpoint() const {
    return listener_->endpoint();
}

std::string Server::controlEndpoint() const {
    return control_ ? control_->endpoint() : std::string();
}

void Server::stop() {
    faults_->end();
    listener_->stop();
    if (control_) control_->stop();
}

void Server::createBucket(const std::string& name, const std::string& region) {
    if (!isBucketName(name)) {
        throw std::invalid_argument("'" + name +
                                    "' can't be a bucket's name in S3: 3 to 63 lower-case letters, digits, "
                                    "hyphens and dots, and none of the reserved names (InvalidBucketName)");
    }
    if (region.empty() || !isRegion(region))
        throw std::invalid_argument("'" + region + "' can't be a region (InvalidLocationConstraint)");
    try {
        service_->store().createBucket({name, region == "us-east-1" ? "" : region, service_->now()});
    } catch (const S3Error&) {
        throw std::invalid_argument("the bucket '" + name + "' exists");
    }
}

void Server::putObject(const std::string& bucket, const std::string& key, std::string bytes) {
    Store& store = service_->store();
    Headers metadata{{"content-type", "binary/octet-stream"}};
    try {
        Room room(&store.memory(), bytes.size());
        Bytes stored(std::move(bytes), std::move(room));
        std::string etag = hex(digestOf(Digest::md5(), stored));
        const SharedRoom ownRoom = store.roomFor(key, metadata);
        const auto seconds = std::chrono::floor<std::chrono::seconds>(service_->now());
        store.put(bucket, key,
                  std::make_shared<const Object>(
                      Object{std::move(stored), std::move(etag), std::move(metadata), seconds, ownRoom}));
    } catch (const S3Error& error) {
        if (error.code() == "NoSuchBucket")
            throw std::invalid_argument("there is no bucket '" + bucket + "'");
        throw std::runtime_error(error.message());
    }
}

std::optional<std::string> Server::object(const std::string& bucket, const std::string& key) const {
    try {
        return service_->store().object(bucket, key)->bytes.text();
    } catch (const S3Error&) {
        return std::nullopt;
    }
}

std::vector<std::string> Server::keys(const std::string& bucket) const {
    std::vector<std::string> keys;
    try {
        service_->store().readObjects(bucket, [&keys](const Objects& objects) {
            for (const auto& [key, object] : objects)
                keys.push_back(key);
        });
    } catch (const S3Error&) {
        // No bucket, no keys.
    }
    return keys;
}

std::size_t Server::openUploads(const std::string& bucket) const {
    try {
        return service_->store().uploads(bucket).size();
    } catch (const S3Error&) {
        return 0;
    }
}

std::uint64_t Server::memoryUsed() const {
    return service_->store().memory().used();
}

std::vector<RequestRecord> Server::requests() const {
    return log_->records();
}

RequestCounts Server::requestCounts() const {
    return log_->counts();
}

void Server::forgetRequests() {
    log_->forget();
}

std::size_t Server::connections() const {
    return static_cast<std::size_t>(listener_->accepted());
}

void Server::plan(Fault fault) {
    faults_->add({std::move(fault)});
}

void Server::plan(std::vector<Fault> faults) {
    faults_->add(std::move(faults));
}

std::vector<Fault> Server::plannedFaults() const {
    return faults_->faults();
}

void Server::resetFaults() {
    faults_->replace({});
}

std::size_t Server::plannedFaultsLeft() const {
    return faults_->left();
}

void Server::releaseStalled() {
    faults_->release();
}

}  // namespace s3server
