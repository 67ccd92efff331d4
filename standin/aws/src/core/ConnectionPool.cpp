#include "core/ConnectionPool.hpp"

#include <algorithm>

namespace standin::aws {

ConnectionPool::ConnectionPool(const Aws::Client::ClientConfiguration& configuration)
    : configuration_(configuration), limit_(std::max(1U, configuration.maxConnections)) {}

ConnectionPool::Lease ConnectionPool::acquire() {
    std::unique_lock lock(mutex_);
    freed_.wait(lock, [this] { return !idle_.empty() || all_.size() < limit_; });
    return {takeIdleOrMake(), GiveBack{this}};
}

/// The one used last comes first: its connection is the likeliest to be open still.
Connection* ConnectionPool::takeIdleOrMake() {
    if (idle_.empty()) {
        idle_.reserve(all_.size() + 1);
        all_.push_back(std::make_unique<Connection>(configuration_));
        return all_.back().get();
    }
    Connection* const connection = idle_.back();
    idle_.pop_back();
    return connection;
}

void ConnectionPool::giveBack(Connection* connection) {
    {
        const std::lock_guard lock(mutex_);
        idle_.push_back(connection);
    }
    freed_.notify_one();
}

}  // namespace standin::aws
