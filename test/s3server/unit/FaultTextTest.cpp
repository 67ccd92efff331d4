#include "s3server/Fault.hpp"

#include <gmock/gmock.h>

#include <stdexcept>

#include "faults/FaultPlan.hpp"

namespace s3server::test {
namespace {

using testing::ElementsAre;

Request requestFor(const std::string& bucket, const std::string& key) {
    Request request;
    request.method = "GET";
    request.bucket = bucket;
    request.key = key;
    return request;
}

bool befalls(FaultPlan& plan, const std::string& operation = "GetObject", const std::string& bucket = "b",
             const std::string& key = "k") {
    return plan.take(operation, requestFor(bucket, key)).has_value();
}

std::vector<std::string> texts(const FaultPlan& plan) {
    std::vector<std::string> texts;
    for (const Fault& fault : plan.faults())
        texts.push_back(fault.text());
    return texts;
}

TEST(FaultPlan, LetsTheSkippedPassAndEndsAfterTheTimes) {
    FaultPlan plan;
    plan.add({Fault::reset().skip(1).times(2)});
    EXPECT_FALSE(befalls(plan));
    EXPECT_TRUE(befalls(plan));
    EXPECT_EQ(plan.left(), 1u);
    EXPECT_TRUE(befalls(plan));
    EXPECT_FALSE(befalls(plan));
    EXPECT_EQ(plan.left(), 0u);
}

TEST(FaultPlan, LooksAtOperationBucketKeyAndMethod) {
    FaultPlan plan;
    plan.add({Fault::reset().on("GetObject").inBucket("b").forKey("k").withMethod("GET")});
    EXPECT_FALSE(befalls(plan, "HeadObject"));
    EXPECT_FALSE(befalls(plan, "GetObject", "other"));
    EXPECT_FALSE(befalls(plan, "GetObject", "b", "other"));
    EXPECT_TRUE(befalls(plan));
}

TEST(FaultPlan, TakesTheFirstPlannedThatMatches) {
    FaultPlan plan;
    plan.add({Fault::status(503).on("PutObject")});
    plan.add({Fault::cutAfter(1)});
    plan.add({Fault::cutAfter(2)});
    const auto taken = plan.take("GetObject", requestFor("b", "k"));
    ASSERT_TRUE(taken);
    ASSERT_TRUE(std::holds_alternative<fault::CutAfter>(taken->action));
    EXPECT_EQ(std::get<fault::CutAfter>(taken->action).bytes, 1u);
    EXPECT_EQ(plan.left(), 2u);
}

TEST(FaultPlan, TellsWhatIsLeftOfEach) {
    FaultPlan plan;
    plan.add({Fault::reset().skip(2).times(3), Fault::stall().times(0), Fault::status(503).on("PutObject")});
    befalls(plan);
    EXPECT_THAT(texts(plan), ElementsAre("reset+1*3", "503:PutObject"));
    befalls(plan);
    befalls(plan);
    EXPECT_THAT(texts(plan), ElementsAre("reset*2", "503:PutObject"));
}

TEST(FaultPlan, ReplacesWhatIsLeft) {
    FaultPlan plan;
    plan.add({Fault::reset().times(3)});
    plan.replace({Fault::cutAfter(7)});
    EXPECT_THAT(texts(plan), ElementsAre("cut=7"));
    plan.replace({});
    EXPECT_FALSE(befalls(plan));
}

TEST(FaultPlan, HoldsNobodyWhoWasReleasedBeforeTheWaitBegan) {
    FaultPlan plan;
    plan.add({Fault::stall()});
    const auto taken = plan.take("GetObject", requestFor("b", "k"));
    plan.replace({});
    EXPECT_TRUE(plan.waitForRelease(taken->releases));
}

TEST(FaultText, IsWrittenAsItIsRead) {
    for (const char* const text :
         {"503", "503=SlowDown", "error-in-200=InternalError", "reply=418", "reply=200,%3Ctea%2F%3E%40%2A",
          "cut=1000", "delay=250", "stall", "reset", "reset-after-headers", "close",
          "503=ServiceUnavailable+1*2:GetObject@demo/a/b@:*+.bin", "stall@demo", "reset*100"})
        EXPECT_EQ(Fault::parse(text).text(), text);
}

TEST(FaultText, LeavesOutWhatItHasNoWordsFor) {
    EXPECT_EQ(Fault::reply(200, {{"x-a", "b"}}, "c").withMethod("GET").text(), "reply=200,c");
    EXPECT_EQ(Fault::errorIn200("").text(), "error-in-200");
}

TEST(FaultText, NamesStatusTimesSkipOperationAndPlace) {
    const Fault fault = Fault::parse("503=ServiceUnavailable+1*2:GetObject@demo/a/b.bin");
    ASSERT_TRUE(std::holds_alternative<fault::Status>(fault.action()));
    EXPECT_EQ(std::get<fault::Status>(fault.action()).status, 503);
    EXPECT_EQ(std::get<fault::Status>(fault.action()).code, "ServiceUnavailable");
    EXPECT_EQ(fault.skipped(), 1u);
    EXPECT_EQ(fault.repetitions(), 2u);
    EXPECT_TRUE(fault.matches("GetObject", "GET", "demo", "a/b.bin"));
    EXPECT_FALSE(fault.matches("PutObject", "GET", "demo", "a/b.bin"));
    EXPECT_FALSE(fault.matches("GetObject", "GET", "demo", "a"));
}

TEST(FaultText, ReadsEveryAction) {
    EXPECT_TRUE(std::holds_alternative<fault::Status>(Fault::parse("500").action()));
    EXPECT_EQ(std::get<fault::CutAfter>(Fault::parse("cut=1000").action()).bytes, 1000u);
    EXPECT_EQ(std::get<fault::Delay>(Fault::parse("delay=250").action()).time.count(), 250);
    EXPECT_EQ(std::get<fault::ErrorIn200>(Fault::parse("error-in-200=SlowDown").action()).code, "SlowDown");
    EXPECT_EQ(std::get<fault::Reply>(Fault::parse("reply=418").action()).status, 418);
    EXPECT_EQ(std::get<fault::Reply>(Fault::parse("reply=200,%3Ctea%2F%3E*2:GetObject").action()).body,
              "<tea/>");
    EXPECT_TRUE(std::holds_alternative<fault::Stall>(Fault::parse("stall").action()));
    EXPECT_TRUE(std::holds_alternative<fault::Reset>(Fault::parse("reset").action()));
    EXPECT_TRUE(
        std::holds_alternative<fault::ResetAfterHeaders>(Fault::parse("reset-after-headers").action()));
    EXPECT_TRUE(std::holds_alternative<fault::CloseWithoutReply>(Fault::parse("close").action()));
}

TEST(FaultText, ThatMakesNoSenseIsRefusedWithTheReason) {
    for (const char* const text : {"",
                                   "200",
                                   "1000",
                                   "cut",
                                   "cut=many",
                                   "delay=-1",
                                   "stall=1",
                                   "reply",
                                   "reply=x",
                                   "reply=99",
                                   "reply=200,%zz",
                                   "explode",
                                   "503*x",
                                   "503+",
                                   "503*",
                                   "503:GetNothing",
                                   "503:",
                                   "503@",
                                   "99999999999",
                                   "404=A\x1b",
                                   "error-in-200=A\nB"})
        EXPECT_THROW(Fault::parse(text), std::invalid_argument) << text;
}

}  // namespace
}  // namespace s3server::test
