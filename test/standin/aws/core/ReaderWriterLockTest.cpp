#include <aws/core/utils/threading/ReaderWriterLock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

using namespace Aws::Utils::Threading;

namespace {

bool readerGetsIn(ReaderWriterLock& lock) {
    auto reader = std::async(std::launch::async, [&lock] { const ReaderLockGuard guard(lock); });
    return reader.wait_for(std::chrono::seconds(10)) == std::future_status::ready;
}

TEST(ReaderWriterLock, LetsReadersInTogether) {
    ReaderWriterLock lock;
    const ReaderLockGuard guard(lock);
    EXPECT_TRUE(readerGetsIn(lock));
}

TEST(ReaderWriterLock, MakesAReaderWaitForTheWriter) {
    ReaderWriterLock lock;
    int value = 0;
    lock.LockWriter();
    auto reader = std::async(std::launch::async, [&] {
        const ReaderLockGuard guard(lock);
        return value;
    });
    value = 1;
    lock.UnlockWriter();
    EXPECT_EQ(reader.get(), 1);
}

/// Two readers of whom one always reads, if they can: who came in last stays until the other one comes.
class Relay {
public:
    explicit Relay(ReaderWriterLock& lock) : lock_(lock) {}

    void run(const std::atomic<bool>& over) {
        for (int round = 0; round < 100'000 && !over; ++round) {
            const ReaderLockGuard guard(lock_);
            const int entry = ++entries_;
            const auto patience = std::chrono::steady_clock::now() + std::chrono::milliseconds(20);
            while (entries_ == entry && !over && std::chrono::steady_clock::now() < patience)
                std::this_thread::yield();
        }
    }

    void waitUntilUnderWay() const {
        while (entries_ < 10)
            std::this_thread::yield();
    }

private:
    ReaderWriterLock& lock_;
    std::atomic<int> entries_ = 0;
};

TEST(ReaderWriterLock, LetsAWriterInThoughReadersKeepComing) {
    ReaderWriterLock lock;
    Relay relay(lock);
    std::atomic<bool> written = false;
    std::atomic<int> relaysOver = 0;
    int relaysOverBefore = 0;
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 2; ++reader)
        readers.emplace_back([&] {
            relay.run(written);
            ++relaysOver;
        });
    relay.waitUntilUnderWay();
    {
        const WriterLockGuard guard(lock);
        relaysOverBefore = relaysOver.load();
        written = true;
    }
    for (auto& reader : readers)
        reader.join();
    EXPECT_EQ(relaysOverBefore, 0) << "the writer waited for the last reader";
}

TEST(ReaderLockGuard, LetsGoAfterBecomingTheWriter) {
    ReaderWriterLock lock;
    {
        ReaderLockGuard guard(lock);
        guard.UpgradeToWriterLock();
    }
    EXPECT_TRUE(readerGetsIn(lock));
}

TEST(WriterLockGuard, LetsGoAtItsEnd) {
    ReaderWriterLock lock;
    { const WriterLockGuard guard(lock); }
    EXPECT_TRUE(readerGetsIn(lock));
}

}  // namespace
