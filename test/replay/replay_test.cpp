#include "replay/Replay.hpp"
#include "replay/KnownDifferences.hpp"
#include "replay/Times.hpp"
#include "support/process/CleanEnvironment.hpp"

#include <aws/core/Aws.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace replay {
namespace {

const std::filesystem::path dataFolder = REPLAY_DATA_FOLDER;

// The SDK itself is held to the recording in every case.
KnownDifferences knownDifferences() {
#ifdef REPLAY_WITH_STANDIN
    return KnownDifferences(dataFolder / "differences.json");
#else
    return {};
#endif
}

std::vector<RecordedCase> casesThatAre(bool slow) {
    static const std::vector<RecordedCase> all = loadCases(dataFolder);
    std::vector<RecordedCase> chosen;
    std::copy_if(all.begin(), all.end(), std::back_inserter(chosen),
                 [slow](const RecordedCase& recorded) { return recorded.isSlow() == slow; });
    return chosen;
}

std::string testName(const testing::TestParamInfo<RecordedCase>& info) {
    std::string name = info.param.id;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

class RecordedExchange : public testing::TestWithParam<RecordedCase> {};

TEST_P(RecordedExchange, EndsAsObserved) {
    const Json expected = knownDifferences().expected(GetParam());
    if (const int signal = deadlySignal(expected); signal != 0) {
        EXPECT_EXIT(replayCase(GetParam()), testing::KilledBySignal(signal), "");
        return;
    }
    const Json seen = withFittingTimes(replayCase(GetParam()), expected);
    EXPECT_THAT(differences(expected, seen), testing::IsEmpty())
        << "as a patch of the recording: " << printable(Json::diff(GetParam().observation(), seen));
}

INSTANTIATE_TEST_SUITE_P(Quick, RecordedExchange, testing::ValuesIn(casesThatAre(false)), testName);
INSTANTIATE_TEST_SUITE_P(Slow, RecordedExchange, testing::ValuesIn(casesThatAre(true)), testName);

struct TimeCase {
    long expectedMs;
    long seenMs;
    bool fits;
};

class RecordedTime : public testing::TestWithParam<TimeCase> {};

TEST_P(RecordedTime, IsComparedAsARatio) {
    const Json expected{{{"elapsed_ms_about", GetParam().expectedMs}}};
    const Json seen{{{"elapsed_ms_about", GetParam().seenMs}}};
    EXPECT_EQ(withFittingTimes(seen, expected), GetParam().fits ? expected : seen);
}

INSTANTIATE_TEST_SUITE_P(All, RecordedTime,
                         testing::Values(TimeCase{3000, 3010, true}, TimeCase{3000, 1500, true},
                                         TimeCase{3000, 1499, false}, TimeCase{3000, 15000, true},
                                         TimeCase{3000, 15001, false}, TimeCase{0, 5000, true},
                                         TimeCase{0, 5001, false}));

TEST(RecordedTimes, ThatAreMissingStandForShortOnes) {
    const Json expected = Json::parse(R"([{"success": true}])");
    EXPECT_EQ(withFittingTimes(Json::parse(R"([{"success": true, "elapsed_ms_about": 9}])"), expected),
              expected);
    const Json late = Json::parse(R"([{"success": true, "elapsed_ms_about": 9000}])");
    EXPECT_EQ(withFittingTimes(late, expected), late);
}

TEST(KnownDifferences, AllBelongToARecordedCase) {
    std::vector<std::string> unknown = knownDifferences().listedCases();
    for (const RecordedCase& recorded : loadCases(dataFolder))
        unknown.erase(std::remove(unknown.begin(), unknown.end(), recorded.id), unknown.end());
    EXPECT_THAT(unknown, testing::IsEmpty());
}

class SdkEnvironment : public testing::Environment {
public:
    void SetUp() override { Aws::InitAPI(options_); }
    void TearDown() override { Aws::ShutdownAPI(options_); }

private:
    Aws::SDKOptions options_;
};

}  // namespace
}  // namespace replay

int main(int argc, char** argv) {
    const testsupport::CleanEnvironment environment;
    testing::InitGoogleTest(&argc, argv);
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    testing::AddGlobalTestEnvironment(new replay::SdkEnvironment);
    return RUN_ALL_TESTS();
}
