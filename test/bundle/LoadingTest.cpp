#include <dlfcn.h>

#include <filesystem>
#include <future>
#include <iterator>
#include <optional>
#include <storage/cloudprovider/CloudException.hpp>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "LoadedBundle.hpp"
#include "ServedBucket.hpp"
#include "conformance/AmazonTest.hpp"

using namespace testsupport;
using storage::cloudprovider::CloudException;
using ::testing::ElementsAre;

namespace {

std::vector<std::string> constructedLoggers;  // their channels

}  // namespace

#define LOGGER_CONSTRUCTOR                                                                     \
    "_ZN10foundation3log23basic_diagnostic_loggerIcEC1ERKNSt7__cxx1112basic_stringIcSt11char_" \
    "traitsIcESaIcEEE"

// Stands before the host library's constructor of loggers for every library of this process.
void recordLogger(void* logger, const std::string& channel) asm(LOGGER_CONSTRUCTOR);
void recordLogger(void* logger, const std::string& channel) {
    constructedLoggers.push_back(channel);
    const auto construct = reinterpret_cast<decltype(&recordLogger)>(dlsym(RTLD_NEXT, LOGGER_CONSTRUCTOR));
    construct(logger, channel);
}

namespace {

auto countIn(const char* folder) {
    return std::distance(std::filesystem::directory_iterator(folder), {});
}
auto threads() {
    return countIn("/proc/self/task");
}
auto openFiles() {
    return countIn("/proc/self/fd");
}

TEST(Loading, ConstructsTheClientFactorysLoggerOnly) {
    constructedLoggers.clear();
    const LoadedBundle bundle;
    EXPECT_THAT(constructedLoggers, ElementsAre("storage::s3provider::AwsS3ClientFactory"));
}

TEST(Loading, StartsNoThreadAndOpensNothing) {
    const ServedBucket bucket;
    const auto threadsBefore = threads();
    const auto filesBefore = openFiles();
    const LoadedBundle bundle;
    EXPECT_EQ(threads(), threadsBefore);
    EXPECT_EQ(openFiles(), filesBefore);
    EXPECT_EQ(bucket.server.connections(), 0u);
}

TEST(Unloading, TakesTheLibraryOutOfTheProcess) {
    EXPECT_FALSE(LoadedBundle::isLoaded());
    std::optional<LoadedBundle> bundle(std::in_place);
    EXPECT_TRUE(LoadedBundle::isLoaded());
    bundle.reset();
    EXPECT_FALSE(LoadedBundle::isLoaded());
}

/// Amazon's way from an IRI to bytes: keys from files, a region that S3 tells, TLS, a proxy, and every
/// record.
class UnloadingAfterwards : public AmazonTest {
protected:
    UnloadingAfterwards() {
        environment.unset("AWS_ACCESS_KEY_ID");
        environment.unset("AWS_SECRET_ACCESS_KEY");
        write(".aws/credentials", "[default]\naws_access_key_id=" + s3server::defaultCredentials.accessKey +
                                      "\naws_secret_access_key=" + s3server::defaultCredentials.secretKey);
        environment.set("ZR_AWS_RETRYTIMEMS", "soon");  // leaves a record on the factory's channel
        amazon.putObject("travelled", "file", content);
    }
    ~UnloadingAfterwards() override {
        end.set_value();
        for (auto& thread : threads)
            thread.join();
    }

    /// Reads on a thread that lives on until the test's end.
    std::string readElsewhere(IProvider& provider) {
        std::packaged_task<std::string()> task([&provider] { return get(provider, u"file"); });
        auto read = task.get_future();
        threads.emplace_back([task = std::move(task), ended = ended]() mutable {
            task();
            ended.wait();
        });
        return read.get();
    }

    void useTheBundle() {
        const LoadedBundle bundle;
        const ActiveComponent component(bundle, nullptr);
        const auto provider = component.factory()->createProvider(StorageIRI(u"s3://travelled"));
        EXPECT_EQ(get(*provider, u"file"), content);
        EXPECT_EQ(readElsewhere(*provider), content);
        amazon.plan(s3server::Fault::status(403, "AccessDenied"));
        EXPECT_THROW(provider->stat(u"file"), CloudException);
    }

    const std::string content = "what the bucket serves";
    LogCapture clientLog{clientChannel};
    std::vector<std::thread> threads;
    std::promise<void> end;
    const std::shared_future<void> ended = end.get_future().share();
};

TEST_F(UnloadingAfterwards, WorksWhileThreadsLiveOnThatUsedAProvider) {
    for (int cycle = 0; cycle < 20; ++cycle) {
        useTheBundle();
        ASSERT_FALSE(LoadedBundle::isLoaded()) << "after cycle " << cycle;
    }
    EXPECT_FALSE(log.records().empty());
    EXPECT_FALSE(clientLog.records().empty());
}

TEST(Unloading, WorksAThousandTimesAfterABucketWasRead) {
    const ServedBucket bucket;
    for (int cycle = 0; cycle < 1000; ++cycle) {
        {
            const LoadedBundle bundle;
            const ActiveComponent component(bundle, nullptr);
            const auto provider = component.factory()->createProvider(bucket.iri);
            ASSERT_EQ(get(*provider, u"file"), bucket.content);
        }
        ASSERT_FALSE(LoadedBundle::isLoaded()) << "after cycle " << cycle;
    }
}

}  // namespace
