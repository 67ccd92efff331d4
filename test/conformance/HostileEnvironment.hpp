#pragma once

#include "DiagnosticRecord.hpp"
#include "S3ProviderFactoryV2.hpp"
#include "conformance/AmazonTest.hpp"
#include "support/plugin/HostileTexts.hpp"

namespace testsupport {

/// The way to a bucket of Amazon's with one variable at a time holding text from elsewhere. The secret key is
/// told neither by failures nor by any record.
class HostileEnvironment : public AmazonTest {
protected:
    using Factory = storage::s3provider::S3ProviderFactoryV2;

    HostileEnvironment() {
        tryOnce();
        put(*Factory(nullptr).createProvider(bucket), u"file", "content");
    }

    ~HostileEnvironment() override { expectSecretUntold(); }

    /// Opens the bucket through a new factory. Empty, or what the failure says.
    std::string failureOfOpening() {
        return failureOf([&] { Factory(nullptr).createProvider(bucket); });
    }

    /// Reads the file through a new factory. Empty, or what the failure says.
    std::string failureOfReading() {
        return failureOf(
            [&] { EXPECT_EQ(get(*Factory(nullptr).createProvider(bucket), u"file"), "content"); });
    }

    void expectNoInjectedHeader() const {
        for (const auto& request : amazon.requests())
            EXPECT_EQ(request.header("x-injected"), std::nullopt);
    }

    const StorageIRI bucket{u"s3://travelled"};

private:
    /// The exception's words, and those of the records of failed requests.
    template <typename Action>
    std::string failureOf(const Action& action) {
        expectSecretUntold();
        records_.clear();
        try {
            action();
            return {};
        } catch (const std::exception& failure) {
            std::string said = failure.what();
            for (const auto& text : records_.texts(storage::s3provider::LogFailedRequests))
                said += "\n" + text;
            EXPECT_THAT(said, ::testing::Not(::testing::HasSubstr(s3server::defaultCredentials.secretKey)));
            return said;
        }
    }

    void expectSecretUntold() const {
        EXPECT_THAT(records_.texts(), ::testing::Not(::testing::Contains(
                                          ::testing::HasSubstr(s3server::defaultCredentials.secretKey))));
    }

    LogCapture records_{clientChannel, factoryChannel};
};

}  // namespace testsupport
