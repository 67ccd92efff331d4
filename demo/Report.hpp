#pragma once

#include <s3server/Server.hpp>

#include <string>
#include <vector>

namespace demo {

/// Prints each step with what it put on the wire, and remembers which checks failed.
class Report {
public:
    explicit Report(s3server::Server& server) : server_(server) {}

    /// Begins a step; forgets the requests so far.
    void step(const std::string& title);

    /// One line of the step's result.
    void say(const std::string& text) const;

    void check(bool passed, const std::string& what);

    /// Prints the step's requests by operation, with their bytes.
    void wire() const;

    /// Prints the verdict; true when every check passed.
    bool verdict() const;

private:
    s3server::Server& server_;
    std::size_t passed_ = 0;
    std::vector<std::string> failed_;
};

}  // namespace demo
