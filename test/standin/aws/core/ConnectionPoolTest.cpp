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

class ConnectionPoolTest : public ::testing::Test {
    const CurlGlobal curl_;
};

TEST_F(ConnectionPoolTest, GivesTheSameConnectionAgain) {
    ConnectionPool pool(withConnections(2));
    const Connection* const first = pool.acquire().get();
    EXPECT_EQ(pool.acquire().get(), first);
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
    auto waiting = std::async(std::launch::async, [&] { return pool.acquire().get(); });
    first.reset();
    EXPECT_EQ(waiting.get(), connection);
}

TEST_F(ConnectionPoolTest, HasOneAtLeast) {
    ConnectionPool pool(withConnections(0));
    EXPECT_NE(pool.acquire(), nullptr);
}

}  // namespace
