#include "framework/ProbeRequest.hpp"

#include <aws/core/auth/AWSCredentials.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/model/HeadObjectRequest.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
#include <memory>
#include <sstream>
#include <string_view>
#include <thread>

namespace s3vfs {

namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using boost::system::error_code;

constexpr long timeoutMs = 5000;
constexpr std::size_t longestHead = std::size_t{64} << 10U;
constexpr std::string_view response =
    "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";

/// Takes one request, whatever it is, on a thread of its own.
class Listener {
public:
    Listener() : acceptor_(context_, {asio::ip::address_v4::loopback(), 0}), peer_(context_) {
        acceptor_.async_accept(peer_, [this](error_code error) {
            if (!error) readHead();
        });
        thread_ = std::thread([this] { context_.run(); });
    }

    ~Listener() { stop(); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::string endpoint() const {
        return "http://127.0.0.1:" + std::to_string(acceptor_.local_endpoint().port());
    }

    /// Stops listening. The request line; empty when no whole head has come.
    std::string stop() {
        context_.stop();
        if (thread_.joinable()) thread_.join();
        return isWhole_ ? head_.substr(0, head_.find("\r\n")) : "";
    }

private:
    void readHead() {
        asio::async_read_until(peer_, asio::dynamic_buffer(head_, longestHead), "\r\n\r\n",
                               [this](error_code error, std::size_t) {
                                   isWhole_ = !error;
                                   isWhole_ ? respond() : hangUp();
                               });
    }

    void respond() {
        asio::async_write(peer_, asio::buffer(response), [this](error_code, std::size_t) { hangUp(); });
    }

    void hangUp() {
        error_code ignored;
        peer_.close(ignored);
    }

    asio::io_context context_;
    tcp::acceptor acceptor_;
    tcp::socket peer_;
    std::string head_;      // the thread's while it runs
    bool isWhole_ = false;  // the same
    std::thread thread_;
};

// Neither the machine nor the profile is asked for a region, and no variable leads elsewhere.
Aws::S3::S3ClientConfiguration configurationFor(const std::string& endpoint) {
    Aws::Client::ClientConfiguration configuration("default", true);
    configuration.region = "us-east-1";
    configuration.endpointOverride = endpoint;
    configuration.scheme = Aws::Http::Scheme::HTTP;
    configuration.useFIPS = false;
    configuration.useDualStack = false;
    configuration.connectTimeoutMs = timeoutMs;
    configuration.requestTimeoutMs = timeoutMs;
    configuration.httpRequestTimeoutMs = timeoutMs;
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0, 0);
    configuration.followRedirects = Aws::Client::FollowRedirectsPolicy::NEVER;
    return {configuration, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, false};
}

// Why nothing came back; empty when something did.
std::string sendTo(const std::string& endpoint, const std::string& bucket, const std::string& key) {
    const Aws::S3::S3Client client(Aws::Auth::AWSCredentials("nobody", "nobody"), nullptr,
                                   configurationFor(endpoint));
    Aws::S3::Model::HeadObjectRequest request;
    request.SetBucket(bucket);
    request.SetKey(key);
    const auto outcome = client.HeadObject(request);
    return outcome.IsSuccess() ? "" : outcome.GetError().GetMessage();
}

std::string pathIn(const std::string& requestLine) {
    std::istringstream words(requestLine);
    std::string method;
    std::string target;
    words >> method >> target;
    return target.substr(0, target.find('?'));
}

}  // namespace

ProbeResult probeRequest(const std::string& bucket, const std::string& key) {
    try {
        Listener listener;
        const std::string failure = sendTo(listener.endpoint(), bucket, key);
        const std::string path = pathIn(listener.stop());
        if (path.empty()) return {"", failure.empty() ? "no request arrived" : failure};
        return {path, ""};
    } catch (const std::exception& failure) {
        return {"", failure.what()};
    }
}

}  // namespace s3vfs
