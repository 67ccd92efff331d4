#include <aws/core/utils/threading/ReaderWriterLock.h>
#include <gtest/gtest.h>

#include <future>

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
