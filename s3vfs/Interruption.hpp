#pragma once

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

namespace s3vfs {

/// Thrown to give a command up; who is interrupted has been told already.
class Interrupted {};

/// To be called between two requests, so that a command ends with the one under way. Throws Interrupted once
/// a signal has come.
void throwIfInterrupted();

/// Has SIGINT and SIGTERM end the process in an orderly way, with the exit status 128 + signal.
///
/// The first signal is told on standard error, and the command has two seconds to end by itself. After them,
/// or at a second signal, a thread does the last act and ends the process, whatever the others do. A signal
/// that the process was started to ignore stays ignored.
///
/// One at a time; to be made before other threads are started, since these inherit that the signals are
/// blocked.
class Interruption {
public:
    /// What can't be left out. It is called on a thread of its own, while the command still runs.
    using LastAct = std::function<void()>;

    explicit Interruption(LastAct lastAct);

    /// Waits for the process's end when the last act has begun.
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// The exit status to end with when a signal has come, else this one.
    int status(int otherwise) const;

private:
    void watch();

    const LastAct lastAct_;
    const std::vector<int> signals_;
    std::atomic<bool> over_ = false;
    std::thread watcher_;
};

}  // namespace s3vfs
