#include "replay/RecordedCase.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ostream>
#include <stdexcept>

namespace replay {
namespace {

constexpr int slowMs = 1500;

constexpr std::string_view knownFields[] = {"id",        "kind",          "note",     "slow",
                                            "operation", "set",           "client",   "repeat",
                                            "pause_ms",  "replies",       "outcomes", "wire",
                                            "attempts",  "requests_seen", "content",  "environment",
                                            "files",     "file",          "text",     "use_profile_prefix",
                                            "peer",      "provider",      "calls",    "answers",
                                            "requests",  "observed"};

// A field that nobody looks at would be taken for one that is compared.
void requireKnownFields(const Json& recorded) {
    for (const auto& [name, value] : recorded.items())
        if (std::find(std::begin(knownFields), std::end(knownFields), name) == std::end(knownFields))
            throw std::runtime_error(recorded.at("id").get<std::string>() + " has an unknown field: " + name);
}

RecordedCase parseCase(const std::string& line) {
    Json recorded = Json::parse(line);
    requireKnownFields(recorded);
    std::string id = recorded.at("id");
    return {std::move(id), std::move(recorded)};
}

}  // namespace

bool RecordedCase::isSlow() const {
    int elapsed = 0;
    for (const Json& outcome : recorded.at("outcomes"))
        elapsed += outcome.value("elapsed_ms_about", 0);
    return elapsed > slowMs;
}

Json RecordedCase::observation() const {
    Json seen;
    for (const char* field : {"outcomes", "requests_seen", "attempts", "wire"})
        if (recorded.contains(field)) seen[field] = recorded[field];
    // What never ends by itself takes as long as the machine needs for the requests until it is cut.
    if (seen["requests_seen"].is_string())
        for (Json& outcome : seen["outcomes"])
            outcome.erase("elapsed_ms_about");
    return seen;
}

int deadlySignal(const Json& observation) {
    return observation.at("outcomes").at(0).value("process_died_with_signal", 0);
}

void PrintTo(const RecordedCase& recordedCase, std::ostream* out) {
    *out << recordedCase.id;
}

std::vector<RecordedCase> readCases(const std::filesystem::path& file) {
    std::ifstream stream(file);
    if (!stream) throw std::runtime_error("can't read " + file.string());
    std::vector<RecordedCase> cases;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        try {
            cases.push_back(parseCase(line));
        } catch (const Json::exception& error) {
            throw std::runtime_error(file.string() + ":" + std::to_string(number) + ": " + error.what());
        }
    }
    return cases;
}

std::vector<RecordedCase> loadCases(const std::filesystem::path& folder) {
    std::vector<RecordedCase> all;
    for (const char* name : {"errors.jsonl", "results.jsonl", "requests.jsonl", "regressions.jsonl"}) {
        std::vector<RecordedCase> cases = readCases(folder / name);
        std::move(cases.begin(), cases.end(), std::back_inserter(all));
    }
    return all;
}

}  // namespace replay
