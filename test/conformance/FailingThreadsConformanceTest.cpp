#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/core/demangle.hpp>
#include <sstream>
#include <thread>
#include <typeinfo>

#include "conformance/targets/EmbeddedTarget.hpp"
#include "support/plugin/CloudFailure.hpp"

using namespace testsupport;
using s3server::Fault;
using storage::cloudprovider::CloudClient;
using storage::cloudprovider::CloudException;
using ::testing::Each;

namespace {

constexpr int callsEach = 6;
constexpr unsigned always = 1000000;

/// What happens to the downloads of a key, and what their caller gets.
struct Fate {
    std::string key;
    std::optional<Fault> fault;
    std::string outcome;
};

std::string contentOf(const std::string& key) {
    return std::string(50000, 'x') + " of " + key;
}

std::vector<Fate> fates() {
    return {{"whole/1", std::nullopt, contentOf("whole/1")},
            {"whole/2", std::nullopt, contentOf("whole/2")},
            {"whole/3", std::nullopt, contentOf("whole/3")},
            {"denied", Fault::status(403, "AccessDenied"), "PermissionDeniedException(access_denied)"},
            {"gone", Fault::status(404, "NoSuchKey"), "ResourceNotFoundException(no_such_key)"},
            {"busy", Fault::status(503, "SlowDown"), "UnknownErrorException(none)"},
            {"reset", Fault::reset(), "UnknownErrorException(none)"},
            {"reset-late", Fault::resetAfterHeaders(), "UnknownErrorException(none)"},
            {"cut", Fault::cutAfter(20000), "UnknownErrorException(none)"},
            {"silent", Fault::closeWithoutReply(), "UnknownErrorException(none)"}};
}

std::string outcomeOf(CloudClient& client, const std::string& key) {
    std::ostringstream out;
    try {
        client.download(key, out, 0, 0);
        return out.str();
    } catch (const CloudException& failure) {
        const auto type = boost::core::demangle(typeid(failure).name());
        return type.substr(type.rfind(':') + 1) + "(" + inAscii(identifierOf(failure)) + ")" + out.str();
    }
}

}  // namespace

class FailingThreads : public ::testing::TestWithParam<Way> {
protected:
    EmbeddedTarget target{GetParam()};
};

TEST_P(FailingThreads, AreManyMoreThanConnectionsAndEachMeetsItsOwnFate) {
    const auto all = fates();
    for (const Fate& fate : all) {
        target.server().putObject(EmbeddedTarget::bucketName, fate.key, contentOf(fate.key));
        if (fate.fault) target.server().plan(Fault(*fate.fault).forKey(fate.key).times(always));
    }
    auto configuration = target.configuration();
    configuration.maxConnections = 2;
    const auto client = target.clientWith(configuration);

    std::vector<std::vector<std::string>> outcomes(all.size());
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < all.size(); ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < callsEach; ++i)
                outcomes[t].push_back(outcomeOf(*client, all[t].key));
        });
    }
    for (auto& thread : threads)
        thread.join();
    for (std::size_t t = 0; t < all.size(); ++t)
        EXPECT_THAT(outcomes[t], Each(all[t].outcome)) << all[t].key;
}

INSTANTIATE_TEST_SUITE_P(EmbeddedServer, FailingThreads, ::testing::Values(Way::HttpPath, Way::HttpsPath),
                         [](const auto& way) { return nameOf(way.param); });
