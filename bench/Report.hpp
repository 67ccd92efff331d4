#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <utility>

#include "Measurement.hpp"

namespace bench {

/// By operation and subject ("curl", "sdk", "client", "parse").
using Results = std::map<std::pair<std::string, std::string>, Measurement>;

/// Markdown tables: CPU time, instructions, allocations, requests and connections.
void print(std::ostream& out, const Results& results);

}  // namespace bench
