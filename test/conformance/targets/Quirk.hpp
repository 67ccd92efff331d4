#pragma once

#include <set>
#include <string>

namespace testsupport {

/// What a server is known to do otherwise than Amazon S3, as far as the suite meets it. Its tests expect that
/// of a server that has the quirk, and nothing but S3's own behaviour of all others.
enum class Quirk {
    /// Of a part's copy source: where the key has a "%", another key is looked for.
    DecodesCopySourcesTwice,
    /// A completion may name the parts in any order; they are put in the order of their numbers.
    SortsPartsOfCompletions,
    /// GetBucketLocation answers with an empty location, as Amazon's does in us-east-1, so that a failure
    /// that
    /// nothing else explains counts as one of the region.
    LeavesLocationsEmpty,
};

using Quirks = std::set<Quirk>;

/// Of names as docs/integration.md lists them, separated by commas. Throws std::invalid_argument for another
/// one.
Quirks parseQuirks(const std::string& names);

}  // namespace testsupport
