#pragma once

#include "replay/RecordedCase.hpp"

namespace replay {

/// Where a stand-in for the SDK does something else on purpose.
class KnownDifferences {
public:
    KnownDifferences() = default;

    /// Reads a JSON object: case id to `reason` and `instead`, a JSON Patch (RFC 6902) for the observation.
    /// Throws std::runtime_error if it can't be read.
    explicit KnownDifferences(const std::filesystem::path& file);

    /// The case's observation, patched if it is listed. Throws std::runtime_error if the patch changes
    /// nothing.
    Json expected(const RecordedCase& recordedCase) const;

    std::vector<std::string> listedCases() const;

private:
    Json listed_ = Json::object();
};

}  // namespace replay
