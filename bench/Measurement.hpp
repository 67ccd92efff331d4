#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Target.hpp"
#include "Workload.hpp"

namespace s3server {
class Server;
}

namespace bench {

/// What one operation costs, on average.
struct Measurement {
    double cpuMicroseconds = 0;  ///< user and system time of the process, the least of several rounds
    std::optional<double> allocations;
    std::optional<double> instructions;      ///< in user space; nothing without valgrind
    std::optional<double> requests;          ///< seen by the server; nothing for a server of somebody else's
    std::optional<std::size_t> connections;  ///< of one whole round
};

/// Starts the workers that do the operations, one process a measurement.
class Workers {
public:
    /// `server`: the one behind `target`, if it is ours to ask; not owned.
    Workers(const Target& target, s3server::Server* server) : target_(target), server_(server) {}

    /// Adds one round to what is known: the lesser CPU time counts.
    void measure(const std::string& subject, const Operation& operation, Measurement& known) const;
    void countAllocations(const std::string& subject, const Operation& operation, Measurement& known) const;
    /// Takes about fifty times as long as doing it.
    void countInstructions(const std::string& subject, const Operation& operation, Measurement& known) const;

private:
    std::optional<double> instructionsOf(const std::string& subject, const Operation& operation,
                                         unsigned count) const;

    Target target_;
    s3server::Server* server_;
};

}  // namespace bench
