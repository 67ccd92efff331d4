#pragma once

#include <string>
#include <utility>
#include <vector>

namespace s3server {

/// Header fields in the order of the wire. Names of received fields are in lower case.
using Headers = std::vector<std::pair<std::string, std::string>>;

}  // namespace s3server
