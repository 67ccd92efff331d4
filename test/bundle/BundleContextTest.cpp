#include "S3ProviderFactoryV2Component.hpp"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

using cppmicroservices::BundleContextPrivate;
using storage::s3provider::bundleContext;

namespace {

std::array<char, 8> places;

/// Some pointer; what it points at is nobody's business here.
BundleContextPrivate* context(std::size_t number) {
    return reinterpret_cast<BundleContextPrivate*>(&places.at(number));
}

void set(BundleContextPrivate* given) {
    _us_set_bundle_context_instance_com_quorvex_s3provider(given);
}

bool isKnown(const BundleContextPrivate* given) {
    const auto* const place = reinterpret_cast<const char*>(given);
    return place >= places.data() && place < places.data() + places.size();
}

// Holds in a process where no other test ran before, as CTest runs it.
TEST(BundleContext, IsNullUntilItIsSet) {
    EXPECT_EQ(bundleContext(), nullptr);
}

TEST(BundleContext, IsWhatWasSetLast) {
    set(context(0));
    set(context(1));
    EXPECT_EQ(bundleContext(), context(1));
    set(nullptr);
    EXPECT_EQ(bundleContext(), nullptr);
}

// What isn't safe here is found by the thread sanitizer; without it, an unguarded pointer passes, too.
TEST(BundleContext, IsSetAndReadByManyThreads) {
    constexpr int rounds = 10000;
    set(context(0));
    std::atomic<int> unknown = 0;
    std::vector<std::thread> threads;
    for (std::size_t number = 0; number < places.size(); ++number)
        threads.emplace_back([&, number] {
            for (int round = 0; round < rounds; ++round) {
                set(context(number));
                if (!isKnown(bundleContext())) ++unknown;
            }
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(unknown, 0);
    EXPECT_TRUE(isKnown(bundleContext()));
}

}  // namespace
