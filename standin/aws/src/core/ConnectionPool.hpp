#pragma once

#include <aws/core/client/ClientConfiguration.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

#include "core/Connection.hpp"

namespace standin::aws {

/// At most `maxConnections` connections (at least one), made when first needed and used again. Thread-safe.
class ConnectionPool {
public:
    struct GiveBack {
        ConnectionPool* pool;
        void operator()(Connection* connection) const { pool->giveBack(connection); }
    };
    /// A connection for one caller; back in the pool when this goes.
    using Lease = std::unique_ptr<Connection, GiveBack>;

    explicit ConnectionPool(const Aws::Client::ClientConfiguration& configuration);

    /// Waits until one is free. To be held during a transfer and at no other time.
    Lease acquire();

private:
    void giveBack(Connection* connection);
    Connection* takeIdleOrMake();

    const Aws::Client::ClientConfiguration configuration_;
    const std::size_t limit_;
    std::mutex mutex_;
    std::condition_variable freed_;
    std::vector<std::unique_ptr<Connection>> all_;
    std::vector<Connection*> idle_;  // as large as all_ at least, so that giving back never allocates
};

}  // namespace standin::aws
