#include "replay/KnownDifferences.hpp"

#include <fstream>
#include <stdexcept>

namespace replay {

KnownDifferences::KnownDifferences(const std::filesystem::path& file) {
    std::ifstream stream(file);
    if (!stream) throw std::runtime_error("can't read " + file.string());
    listed_ = Json::parse(stream);
}

Json KnownDifferences::expected(const RecordedCase& recordedCase) const {
    Json observation = recordedCase.observation();
    const auto listed = listed_.find(recordedCase.id);
    if (listed == listed_.end()) return observation;
    Json patched = observation.patch(listed->at("instead"));
    if (patched == observation)
        throw std::runtime_error(recordedCase.id + " is listed as different but is expected to be equal");
    return patched;
}

std::vector<std::string> KnownDifferences::listedCases() const {
    std::vector<std::string> ids;
    for (const auto& [id, difference] : listed_.items())
        ids.push_back(id);
    return ids;
}

}  // namespace replay
