#include "integration/Tinyproxy.hpp"

#include <chrono>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "support/servers/HeldPort.hpp"

namespace testsupport {

namespace {

constexpr std::chrono::seconds longestStart{30};

std::string configuration(std::uint16_t port, const Tinyproxy::Options& options) {
    std::ostringstream text;
    text << "Listen 127.0.0.1\nAllow 127.0.0.1\nLogLevel Info\nPort " << port << '\n';
    if (options.upstream != 0) text << "Upstream http 127.0.0.1:" << options.upstream << '\n';
    if (!options.user.empty()) text << "BasicAuth " << options.user << ' ' << options.password << '\n';
    return text.str();
}

}  // namespace

bool Tinyproxy::isInstalled() {
    return installedProgram("tinyproxy").has_value();
}

// Between choosing a port and using it, another process may take it.
Tinyproxy::Tinyproxy(Options options) : options_(std::move(options)) {
    for (int attempts = 3; attempts > 0; --attempts) {
        start();
        if (becomesReady()) return;
    }
    throw std::runtime_error("tinyproxy doesn't start: " + log());
}

void Tinyproxy::start() {
    port_ = static_cast<std::uint16_t>(ClosedPort().number());
    const auto file = folder_.path() / "tinyproxy.conf";
    std::ofstream(file) << configuration(port_, options_);
    process_ =
        std::make_unique<BackgroundProcess>(std::vector{installedProgram("tinyproxy").value(),
                                                        std::string("-d"), std::string("-c"), file.string()},
                                            Variables{}, folder_.path().string(), folder_.path() / "log");
}

bool Tinyproxy::becomesReady() {
    const auto latest = std::chrono::steady_clock::now() + longestStart;
    while (process_->running() && std::chrono::steady_clock::now() < latest) {
        if (log().find("Accepting connections") != std::string::npos) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

std::vector<std::string> Tinyproxy::requests() const {
    const std::string text = log();
    const std::regex request(R"(Request \(file descriptor \d+\): (\S+ \S+) HTTP)");
    std::vector<std::string> all;
    for (std::sregex_iterator found(text.begin(), text.end(), request), end; found != end; ++found)
        all.push_back(found->str(1));
    return all;
}

std::string Tinyproxy::log() const {
    std::ostringstream text;
    text << std::ifstream(folder_.path() / "log").rdbuf();
    return text.str();
}

}  // namespace testsupport
