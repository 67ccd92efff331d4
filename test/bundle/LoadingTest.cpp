#include <dlfcn.h>

#include <filesystem>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "LoadedBundle.hpp"
#include "ServedBucket.hpp"

using namespace testsupport;
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

TEST(Unloading, WorksAThousandTimesAfterABucketWasRead) {
    const ServedBucket bucket;
    for (int cycle = 0; cycle < 1000; ++cycle) {
        {
            const LoadedBundle bundle;
            const ActiveComponent component(bundle, nullptr);
            const auto provider = component.factory()->createProvider(bucket.iri);
            ASSERT_EQ(readWhole(*provider, u"file"), bucket.content);
        }
        ASSERT_FALSE(LoadedBundle::isLoaded()) << "after cycle " << cycle;
    }
}

}  // namespace
