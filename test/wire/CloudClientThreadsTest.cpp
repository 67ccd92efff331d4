#include <atomic>
#include <sstream>
#include <thread>

#include "support/LogCapture.hpp"
#include "support/ScriptedServer.hpp"
#include "wire/WireTable.hpp"

using namespace testsupport;

TEST(CloudClientThreads, ShareOneClientAndKeepTheirOwnIndentation) {
    constexpr int threadCount = 8;
    constexpr int callsEach = 20;
    ScriptedServer server({{Step::send(httpReply(200, {}, "content"))}}, {std::nullopt, false, true});
    LogCapture log({"storage::s3provider::S3Client"}, 0x7FFF);
    storage::s3provider::S3CloudClient client("b", plainClient(server.endpoint()), {1, 0}, "eu-west-3");
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; i < callsEach; ++i) {
                std::ostringstream out;
                client.download("k" + std::to_string(t), out, 0, 0);
                if (out.str() != "content") ++wrong;
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(server.requests().size(), static_cast<std::size_t>(threadCount * callsEach));
    int insideRecords = 0;
    for (const auto& record : log.records()) {
        const bool frame = record.level == 32 || record.level == 64;
        EXPECT_EQ(record.indent, frame ? 0 : 1) << record.text;
        insideRecords += frame ? 0 : 1;
    }
    EXPECT_EQ(insideRecords, 2 * threadCount * callsEach + 1);
}
