#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <sstream>
#include <thread>

#include "support/plugin/CloudFailure.hpp"
#include "support/plugin/LogCapture.hpp"
#include "support/servers/ScriptedServer.hpp"
#include "wire/WireTable.hpp"

using namespace testsupport;

namespace {

/// Counts requests between their arrival and their answer.
class Gauge {
public:
    /// A request that arrives, and leaves when `expected` requests were here at once (or don't come for
    /// long).
    void pass(int expected) {
        std::unique_lock lock(mutex_);
        most_ = std::max(most_, ++present_);
        changed_.notify_all();
        changed_.wait_for(lock, std::chrono::seconds(10), [&] { return most_ >= expected; });
        changed_.wait_for(lock, std::chrono::milliseconds(2), [&] { return most_ > expected; });
        --present_;
    }

    int most() const {
        const std::lock_guard lock(mutex_);
        return most_;
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    int present_ = 0;
    int most_ = 0;
};

}  // namespace

TEST(CloudClientThreads, ShareOneClientAndKeepTheirOwnIndentation) {
    constexpr int threadCount = 8;
    constexpr int callsEach = 20;
    ScriptedServer server({{Step::send(httpReply(200, {}, "content"))}}, {std::nullopt, false, false, true});
    LogCapture log({clientChannel}, 0x7FFF);
    storage::s3provider::S3CloudClient client("b", plainClient(server.endpoint()), {1, 0}, "eu-west-3");
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < callsEach; ++i) {
                std::ostringstream out;
                client.download("k" + std::to_string(t), out, 0, 0);
                if (out.str() != "content") ++wrong;
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(server.requests().size(), static_cast<std::size_t>(threadCount * callsEach));
    int insideRecords = 0;
    for (const auto& record : log.records()) {
        const bool frame = record.level == 32 || record.level == 64;
        EXPECT_EQ(record.indent, frame ? 0 : 1) << record.text;
        insideRecords += frame ? 0 : 1;
    }
    EXPECT_EQ(insideRecords, 2 * threadCount * callsEach + 1);
}

TEST(CloudClientThreads, HaveAsManyRequestsOnTheWayAsConnectionsAreAllowedAlsoWhenAllFail) {
    constexpr int threadCount = 8;
    constexpr int callsEach = 5;
    constexpr int allowed = 3;
    Gauge gauge;
    const auto fail = [&gauge] {
        gauge.pass(allowed);
        return httpReply(404, {{"Content-Length", "100"}}, "cut");
    };
    ScriptedServer server({{Step::sendMade(fail), Step::reset()}}, {std::nullopt, false, false, true});
    auto configuration = plainConfiguration(server.endpoint());
    configuration.maxConnections = allowed;
    storage::s3provider::S3CloudClient client("b", sdkClient(configuration), {1, 0}, "eu-west-3");
    std::atomic<int> failures = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < callsEach; ++i) {
                try {
                    client.remove("k");
                } catch (const storage::cloudprovider::UnknownErrorException&) {
                    ++failures;
                }
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(failures, threadCount * callsEach);
    EXPECT_EQ(gauge.most(), allowed);
}
