#include "Measurement.hpp"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <s3server/Server.hpp>
#include <stdexcept>
#include <vector>

#include "support/process/Process.hpp"

namespace bench {
namespace {

/// Operations that a worker does before it measures.
constexpr unsigned warmUps = 2;

using Environment = std::map<std::string, std::string>;

testsupport::Finished start(const std::vector<std::string>& command, Environment environment) {
    environment["AWS_EC2_METADATA_DISABLED"] = "true";
    for (const char* const name : {"PATH", "LD_LIBRARY_PATH"}) {
        const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): in a single thread
        if (value != nullptr) environment[name] = value;
    }
    auto finished = testsupport::run(command, environment, "/");
    if (finished.status != 0) throw std::runtime_error("a worker failed: " + finished.err);
    return finished;
}

std::vector<std::string> workerCommand(const std::string& subject, const Operation& operation,
                                       unsigned count) {
    return {BENCH_WORKER, subject, std::string(operation.name), std::to_string(count)};
}

/// Callgrind's line "==PID== Collected : N".
std::optional<double> collected(const std::string& report) {
    const std::string label = "Collected : ";
    const auto place = report.find(label);
    if (place == std::string::npos) return std::nullopt;
    return std::stod(report.substr(place + label.size()));
}

}  // namespace

void Workers::measure(const std::string& subject, const Operation& operation, Measurement& known) const {
    const std::size_t connectionsBefore = server_ == nullptr ? 0 : server_->connections();
    if (server_ != nullptr) server_->forgetRequests();
    const auto worker = start(workerCommand(subject, operation, operation.rounds), asEnvironment(target_));
    const double cpu = std::stod(worker.out) / operation.rounds;
    known.cpuMicroseconds = known.cpuMicroseconds == 0 ? cpu : std::min(known.cpuMicroseconds, cpu);
    if (server_ == nullptr) return;
    known.requests = static_cast<double>(server_->requests().size()) / (operation.rounds + warmUps);
    known.connections = server_->connections() - connectionsBefore;
}

void Workers::countAllocations(const std::string& subject, const Operation& operation,
                               Measurement& known) const {
    auto environment = asEnvironment(target_);
    environment["LD_PRELOAD"] = BENCH_ALLOCATIONS;
    const auto worker = start(workerCommand(subject, operation, operation.counted), environment);
    const auto blank = worker.out.find(' ');
    known.allocations = std::stod(worker.out.substr(blank)) / operation.counted;
}

void Workers::countInstructions(const std::string& subject, const Operation& operation,
                                Measurement& known) const {
    const auto start = instructionsOf(subject, operation, 0);
    const auto whole = instructionsOf(subject, operation, operation.counted);
    if (start && whole) known.instructions = (*whole - *start) / operation.counted;
}

std::optional<double> Workers::instructionsOf(const std::string& subject, const Operation& operation,
                                              unsigned count) const {
    std::vector<std::string> command{"/usr/bin/env", "valgrind", "--tool=callgrind",
                                     "--callgrind-out-file=/dev/null"};
    for (auto& word : workerCommand(subject, operation, count))
        command.push_back(std::move(word));
    return collected(start(command, asEnvironment(target_)).err);
}

}  // namespace bench
