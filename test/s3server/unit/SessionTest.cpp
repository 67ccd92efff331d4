#include "http/Session.hpp"

#include <gmock/gmock.h>

namespace s3server::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::uint64_t kibibyte = std::uint64_t{1} << 10U;
constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20U;

/// A client that sends what it is given, then the same bytes again and again until it is left alone.
class EndlessClient : public Wire {
public:
    EndlessClient(std::string beginning, std::string repeated)
        : pending_(std::move(beginning)), repeated_(std::move(repeated)) {}

    bool open() override { return true; }
    std::size_t read(char* data, std::size_t size) override {
        if (taken_ > tooMuch) return 0;
        while (pending_.size() < size)
            pending_ += repeated_;
        const std::size_t count = pending_.copy(data, size);
        pending_.erase(0, count);
        taken_ += count;
        return count;
    }
    std::size_t write(std::string_view bytes) override {
        answer_ += bytes;
        return bytes.size();
    }
    void close() override {}
    void reset() override {}
    void interrupt() override {}

    const std::string& answer() const { return answer_; }
    std::uint64_t taken() const { return taken_; }

private:
    static constexpr std::uint64_t tooMuch = 256 * mebibyte;
    std::string pending_;
    const std::string repeated_;
    std::string answer_;
    std::uint64_t taken_ = 0;
};

void serve(EndlessClient& client) {
    Options options;
    options.checkSignatures = false;
    Service service(options);
    service.store().createBucket({"b", "", service.now()});
    FaultPlan faults;
    RequestLog log({}, 0);
    serveConnection(client, {service, faults, log}, 1);
}

TEST(Session, RefusesAHeadWithoutEnd) {
    EndlessClient client("GET /b/k HTTP/1.1\r\n", "x-amz-meta-a: " + std::string(1000, 'x') + "\r\n");
    serve(client);
    EXPECT_THAT(client.answer(), AllOf(StartsWith("HTTP/1.1 400 "), HasSubstr("<Code>BadRequest</Code>")));
    EXPECT_LE(client.taken(), 256 * kibibyte);
}

TEST(Session, RefusesARequestLineWithoutEnd) {
    EndlessClient client("GET /b/", "k");
    serve(client);
    EXPECT_THAT(client.answer(), StartsWith("HTTP/1.1 400 "));
    EXPECT_LE(client.taken(), 256 * kibibyte);
}

TEST(Session, RefusesADocumentWithoutEndOnceItHasReadEnoughOfIt) {
    EndlessClient client("POST /b?delete HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\nffffffffffff\r\n",
                         "<a>");
    serve(client);
    EXPECT_THAT(client.answer(), AllOf(StartsWith("HTTP/1.1 400 "), HasSubstr("<Code>EntityTooLarge</Code>"),
                                       HasSubstr("<MaxSizeAllowed>2097152</MaxSizeAllowed>")));
    EXPECT_LE(client.taken(), 65 * mebibyte);
}

TEST(Session, EndsAtAChunksHeadWithoutEnd) {
    EndlessClient client("PUT /b/k HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n1;", "x");
    serve(client);
    EXPECT_LE(client.taken(), 256 * kibibyte);
}

TEST(Session, EndsAtTrailersWithoutEnd) {
    EndlessClient client("PUT /b/k HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n", "a: b\r\n");
    serve(client);
    EXPECT_LE(client.taken(), 256 * kibibyte);
}

}  // namespace
}  // namespace s3server::test
