#include "Interruption.hpp"

#include <pthread.h>
#include <signal.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <utility>

namespace s3vfs {

namespace {

constexpr timespec patience{2, 0};

std::atomic<int> received = 0;  // the first signal

bool isIgnored(int signal) {
    struct sigaction action {};
    ::sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

std::vector<int> heededSignals() {
    std::vector<int> signals;
    for (const int signal : {SIGINT, SIGTERM})
        if (!isIgnored(signal)) signals.push_back(signal);
    return signals;
}

sigset_t setOf(const std::vector<int>& signals) {
    sigset_t set;
    ::sigemptyset(&set);
    for (const int signal : signals)
        ::sigaddset(&set, signal);
    return set;
}

int waitForOne(const sigset_t& signals) {
    int signal = 0;
    ::sigwait(&signals, &signal);
    return signal;
}

/// In one piece, since another thread may be writing, too.
void say(const std::string& text) {
    std::cerr << "s3vfs: " + text + "\n";
}

int statusOf(int signal) {
    return 128 + signal;
}

}  // namespace

void throwIfInterrupted() {
    if (received != 0) throw Interrupted();
}

Interruption::Interruption(LastAct lastAct) : lastAct_(std::move(lastAct)), signals_(heededSignals()) {
    if (signals_.empty()) return;
    const sigset_t set = setOf(signals_);
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
    watcher_ = std::thread([this] { watch(); });
}

Interruption::~Interruption() {
    if (!watcher_.joinable()) return;
    over_ = true;
    ::pthread_kill(watcher_.native_handle(), signals_.front());  // it only wakes the thread
    watcher_.join();
}

int Interruption::status(int otherwise) const {
    return received != 0 ? statusOf(received) : otherwise;
}

void Interruption::watch() {
    const sigset_t signals = setOf(signals_);
    const int signal = waitForOne(signals);
    if (over_) return;
    received = signal;
    say(std::string("interrupted by ") + (signal == SIGINT ? "SIGINT" : "SIGTERM"));
    const bool again = ::sigtimedwait(&signals, nullptr, &patience) > 0;
    if (over_) return;
    say(std::string(again ? "interrupted again" : "the request under way takes too long") +
        ": nobody waits for its end, and S3 may yet act on it");
    lastAct_();
    std::_Exit(statusOf(signal));
}

}  // namespace s3vfs
