#pragma once

#include <mutex>
#include <shared_mutex>

namespace Aws::Utils::Threading {

/// Many readers or one writer. A writer who waits is let in before readers who come later. Not recursive.
class ReaderWriterLock {
public:
    void LockReader() {
        const std::lock_guard entering(entrance_);
        mutex_.lock_shared();
    }

    void UnlockReader() { mutex_.unlock_shared(); }

    void LockWriter() {
        const std::lock_guard entering(entrance_);
        mutex_.lock();
    }

    void UnlockWriter() { mutex_.unlock(); }

private:
    std::shared_mutex mutex_;  // which alone may let readers in for ever
    std::mutex entrance_;      // held while waiting for mutex_
};

/// Reads for its lifetime, and can become the writer.
class ReaderLockGuard {
public:
    explicit ReaderLockGuard(ReaderWriterLock& lock) : lock_(lock) { lock_.LockReader(); }
    ~ReaderLockGuard() { writing_ ? lock_.UnlockWriter() : lock_.UnlockReader(); }
    ReaderLockGuard(const ReaderLockGuard&) = delete;
    ReaderLockGuard& operator=(const ReaderLockGuard&) = delete;

    /// Lets go before it locks again, so another writer may come between: check again what was read.
    void UpgradeToWriterLock() {
        lock_.UnlockReader();
        lock_.LockWriter();
        writing_ = true;
    }

private:
    ReaderWriterLock& lock_;
    bool writing_ = false;
};

class WriterLockGuard {
public:
    explicit WriterLockGuard(ReaderWriterLock& lock) : lock_(lock) { lock_.LockWriter(); }
    ~WriterLockGuard() { lock_.UnlockWriter(); }
    WriterLockGuard(const WriterLockGuard&) = delete;
    WriterLockGuard& operator=(const WriterLockGuard&) = delete;

private:
    ReaderWriterLock& lock_;
};

}  // namespace Aws::Utils::Threading
