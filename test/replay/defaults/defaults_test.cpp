#include "replay/Replay.hpp"
#include "replay/Times.hpp"
#include "replay/defaults/Observers.hpp"
#include "support/process/CleanEnvironment.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace replay {
namespace {

struct Kind {
    const char* name;
    Json (*observe)(const Json& recorded);
};

constexpr Kind kinds[] = {
    {"client-configuration", observeClientConfiguration},
    {"retry", observeRetryStrategies},
    {"file-names", observeFileNames},
    {"credentials-sources", observeCredentialsSources},
    {"profile-credentials", observeProfileCredentials},
    {"profile-loader", observeProfileLoader},
    {"metadata", observeMetadata},
    {"table", observeTable},
    {"value", observeValues},
    {"date-parse", observeDateParsing},
    {"environment-proxy", observeEnvironmentProxy},
    {"connect-timeout", observeConnectTimeout},
};

Json observe(const Json& recorded) {
    for (const Kind& kind : kinds)
        if (recorded["kind"] == kind.name) return kind.observe(recorded);
    throw std::runtime_error("unknown kind: " + recorded["kind"].dump());
}

Json expected(const Json& recorded) {
    if (!recorded.contains("requests")) return recorded["observed"];
    return {{"observed", recorded["observed"]}, {"requests", recorded["requests"]}};
}

std::vector<RecordedCase> casesThatAre(bool slow) {
    static const std::vector<RecordedCase> all =
        readCases(std::filesystem::path(REPLAY_DATA_FOLDER) / "defaults.jsonl");
    std::vector<RecordedCase> chosen;
    std::copy_if(all.begin(), all.end(), std::back_inserter(chosen), [slow](const RecordedCase& recorded) {
        return recorded.recorded.value("slow", false) == slow;
    });
    return chosen;
}

std::string testName(const testing::TestParamInfo<RecordedCase>& info) {
    std::string name = info.param.id;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

class RecordedDefault : public testing::TestWithParam<RecordedCase> {};

TEST_P(RecordedDefault, IsAsObserved) {
    const Json& recorded = GetParam().recorded;
    const Json seen = withFittingTimes(observe(recorded), expected(recorded));
    EXPECT_THAT(differences(expected(recorded), seen), testing::IsEmpty())
        << recorded["note"]
        << "\nas a patch of the recording: " << printable(Json::diff(expected(recorded), seen));
}

INSTANTIATE_TEST_SUITE_P(Quick, RecordedDefault, testing::ValuesIn(casesThatAre(false)), testName);
INSTANTIATE_TEST_SUITE_P(Slow, RecordedDefault, testing::ValuesIn(casesThatAre(true)), testName);

}  // namespace
}  // namespace replay

int main(int argc, char** argv) {
    const testsupport::CleanEnvironment environment;
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
