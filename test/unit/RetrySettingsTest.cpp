#include "AwsS3ClientFactory.hpp"
#include "support/plugin/FactoryTest.hpp"

using namespace testsupport;
using namespace storage::s3provider;
using ::testing::IsEmpty;

namespace {

struct Setting {
    const char* variable;
    std::int64_t (*read)();
    std::int64_t defaultValue;
};

constexpr Setting settings[] = {{"ZR_AWS_GETDATA_ATTEMPTS", &getDataAttempts, 5},
                                {"ZR_AWS_RETRYTIMEMS", &getRetryTimeMs, 1000}};

class RetrySettings : public FactoryTest, public ::testing::WithParamInterface<Setting> {};

INSTANTIATE_TEST_SUITE_P(Both, RetrySettings, ::testing::ValuesIn(settings),
                         [](const auto& setting) { return setting.param.variable; });

TEST_P(RetrySettings, HaveADefault) {
    EXPECT_EQ(GetParam().read(), GetParam().defaultValue);
    environment.set(GetParam().variable, "");
    EXPECT_EQ(GetParam().read(), GetParam().defaultValue);
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_P(RetrySettings, AreReadAsFarAsTheyAreNumbers) {
    struct Case {
        const char* text;
        std::int64_t value;
    };
    for (const auto& [text, value] :
         {Case{"7", 7}, Case{" 7x", 7}, Case{"12abc", 12}, Case{"-1", -1}, Case{"0", 0}, Case{"+3", 3},
          Case{"2147483647", 2147483647}, Case{"-2147483648", -2147483648LL}}) {
        environment.set(GetParam().variable, text);
        EXPECT_EQ(GetParam().read(), value) << text;
    }
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_P(RetrySettings, FallBackToTheDefaultWithARecord) {
    for (const char* const text : {"abc", "99999999999", "-", " ", "\xFF"}) {
        log.clear();
        environment.set(GetParam().variable, text);
        EXPECT_EQ(GetParam().read(), GetParam().defaultValue) << text;
        ASSERT_EQ(log.records().size(), 1u) << text;
        EXPECT_EQ(log.records()[0].level, 256);
        EXPECT_EQ(log.records()[0].text,
                  std::string("Caught exception while parsing ") + GetParam().variable);
    }
}

TEST_P(RetrySettings, LeaveNoRecordUnlessItsLevelIsEnabled) {
    const LogCapture others{factoryChannel, LogCapture::allLevels & ~256U};
    environment.set(GetParam().variable, "abc");
    EXPECT_EQ(GetParam().read(), GetParam().defaultValue);
    EXPECT_THAT(others.records(), IsEmpty());
}

TEST_F(FactoryTest, ReadsAttemptsBeforeTheirPause) {
    environment.set("ZR_AWS_GETDATA_ATTEMPTS", "many");
    environment.set("ZR_AWS_RETRYTIMEMS", "long");
    const auto settingsRead = getRetrySettings();
    EXPECT_EQ(settingsRead.attempts, 5);
    EXPECT_EQ(settingsRead.retryTimeMs, 1000);
    EXPECT_THAT(log.texts(), ::testing::ElementsAre("Caught exception while parsing ZR_AWS_GETDATA_ATTEMPTS",
                                                    "Caught exception while parsing ZR_AWS_RETRYTIMEMS"));
}

}  // namespace
