#include "core/ConnectionPool.hpp"

#include <gtest/gtest.h>

#include <future>

#include "core/CurlGlobal.hpp"

using namespace standin::aws;

namespace {

Aws::Client::ClientConfiguration withConnections(unsigned count) {
    Aws::Client::ClientConfiguration configuration;
    configuration.maxConnections = count;
    return configuration;
}

/// Which connection the pool gives now; it has it back.
const Connection* given(ConnectionPool& pool) {
    const auto held = pool.acquire();
    const Connection* const connection = held.get();
    return connection;
}

class ConnectionPoolTest : public ::testing::Test {
    const CurlGlobal curl_;
};

TEST_F(ConnectionPoolTest, GivesTheSameConnectionAgain) {
    ConnectionPool pool(withConnections(2));
    const Connection* const first = given(pool);
    EXPECT_EQ(given(pool), first);
}

TEST_F(ConnectionPoolTest, GivesAnotherWhileOneIsInUse) {
    ConnectionPool pool(withConnections(2));
    const auto first = pool.acquire();
    EXPECT_NE(pool.acquire().get(), first.get());
}

TEST_F(ConnectionPoolTest, MakesACallerWaitForTheLastOne) {
    ConnectionPool pool(withConnections(1));
    auto first = pool.acquire();
    const Connection* const connection = first.get();
    auto waiting = std::async(std::launch::async, [&] { return given(pool); });
    first.reset();
    EXPECT_EQ(waiting.get(), connection);
}

TEST_F(ConnectionPoolTest, HasOneAtLeast) {
    ConnectionPool pool(withConnections(0));
    EXPECT_NE(pool.acquire(), nullptr);
}

}  // namespace
