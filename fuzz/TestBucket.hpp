#pragma once

#include "operations/Service.hpp"

namespace fuzz {

/// What a target's server holds: bucket "b" in us-east-1 with the object "k" ("hello"), and an upload "u" of
/// the key "big" with a first part of 5 MiB and a second of one byte. The time stands at
/// 2013-05-24T00:00:00Z.
s3server::Options frozenInTime();
void fill(s3server::Store& store);

}  // namespace fuzz
