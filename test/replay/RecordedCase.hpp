#pragma once

#include <nlohmann/json.hpp>

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace replay {

using Json = nlohmann::json;

/// One line of the data files; data/README.md tells what its fields mean.
struct RecordedCase {
    std::string id;
    Json recorded;

    /// Takes seconds because the client or the server has to wait.
    bool isSlow() const;

    /// What was seen: `outcomes`, `requests_seen`, `wire`, and `attempts` if counted.
    Json observation() const;
};

/// The signal that ended the process in an observation, else 0.
int deadlySignal(const Json& observation);

void PrintTo(const RecordedCase& recordedCase, std::ostream* out);

/// The cases of one file. Throws std::runtime_error with file and line if one can't be read.
std::vector<RecordedCase> readCases(const std::filesystem::path& file);

/// All cases of that folder but those of defaults.jsonl. Throws std::runtime_error with
/// file and line if one can't be read.
std::vector<RecordedCase> loadCases(const std::filesystem::path& folder);

}  // namespace replay
