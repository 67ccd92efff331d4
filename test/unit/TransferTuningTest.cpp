#include "TransferTuning.hpp"

#include "support/process/Environment.hpp"
#include "unit/CloudClientTest.hpp"

using namespace testsupport;
using storage::s3provider::transferBufferSize;
using storage::s3provider::transferMaxHeapSize;
using storage::s3provider::transferMaxNumThreads;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class TransferTuning : public ::testing::Test {
protected:
    LogCapture log{{clientChannel}, allLevels};
};

TEST_F(TransferTuning, HasDefaultsForWhatIsNotSet) {
    const Environment buffer{{"ZR_AWS_TRANSFER_BUFFER_SIZE", std::nullopt}};
    const Environment heap{{"ZR_AWS_TRANSFER_MAX_HEAP_SIZE", std::nullopt}};
    const Environment threads{{"ZR_AWS_TRANSFER_MAX_NUM_THREADS", std::nullopt}};
    EXPECT_EQ(transferBufferSize(), 5242880);
    EXPECT_EQ(transferMaxHeapSize(), 52428800);
    EXPECT_EQ(transferMaxNumThreads(), 10);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(TransferTuning, ReadsEachVariableAtEveryCall) {
    const Environment buffer{{"ZR_AWS_TRANSFER_BUFFER_SIZE", "1"}};
    const Environment heap{{"ZR_AWS_TRANSFER_MAX_HEAP_SIZE", "2"}};
    EXPECT_EQ(transferBufferSize(), 1);
    EXPECT_EQ(transferMaxHeapSize(), 2);
    const Environment changed{{"ZR_AWS_TRANSFER_BUFFER_SIZE", "3"}};
    EXPECT_EQ(transferBufferSize(), 3);
}

TEST_F(TransferTuning, ReadsNumbersAsFarAsTheyGo) {
    struct Case {
        const char* text;
        std::int64_t value;
    };
    for (const auto& [text, value] : {Case{"  12abc", 12}, Case{"-3", -3}, Case{"0", 0}, Case{"+7", 7},
                                      Case{"2147483647", 2147483647}, Case{"-2147483648", -2147483648LL}}) {
        const Environment threads{{"ZR_AWS_TRANSFER_MAX_NUM_THREADS", text}};
        EXPECT_EQ(transferMaxNumThreads(), value) << text;
    }
    EXPECT_TRUE(log.records().empty());
}

TEST_F(TransferTuning, TakesAnEmptyValueForNone) {
    const Environment threads{{"ZR_AWS_TRANSFER_MAX_NUM_THREADS", ""}};
    EXPECT_EQ(transferMaxNumThreads(), 10);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(TransferTuning, FallsBackToTheDefaultWithOneRecord) {
    const Environment threads{{"ZR_AWS_TRANSFER_MAX_NUM_THREADS", "abc"}};
    EXPECT_EQ(transferMaxNumThreads(), 10);
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_EQ(log.records()[0].level, 16);
    EXPECT_THAT(log.records()[0].text, StartsWith("Exception caught: "));
    EXPECT_THAT(log.records()[0].text, HasSubstr("invalid stoi argument"));
}

TEST_F(TransferTuning, FallsBackForNumbersBeyond32Bits) {
    for (const char* text : {"99999999999", "2147483648", "-2147483649", "99999999999999999999999"}) {
        const Environment threads{{"ZR_AWS_TRANSFER_MAX_NUM_THREADS", text}};
        EXPECT_EQ(transferMaxNumThreads(), 10) << text;
        EXPECT_THAT(log.records().back().text, HasSubstr("stoi argument out of range"));
    }
    EXPECT_EQ(log.records().size(), 4u);
}
