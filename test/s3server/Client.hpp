#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "s3server/Headers.hpp"

namespace s3server::test {

/// What came back; status 0 if nothing that is an HTTP answer did.
struct Answer {
    int status = 0;
    /// Names in lower case.
    Headers headers;
    std::string body;
    /// The transport's own words if it failed, also in the middle of a body.
    std::string failure;

    std::string header(const std::string& name) const;
    /// The text between the first <name> and </name>, as it stands.
    std::string element(const std::string& name) const;
    /// Of all such elements, in order.
    std::vector<std::string> elements(const std::string& name) const;
};

/// An HTTP client over libcurl that keeps its connection.
class Client {
public:
    /// `endpoint` with or without a scheme.
    explicit Client(std::string endpoint);
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// Signs what follows with libcurl's own AWS Signature Version 4. From then on dot segments are taken out
    /// of paths, as libcurl 8 refuses to sign a path as it is.
    void signAs(const std::string& accessKey, const std::string& secretKey, const std::string& region);
    /// Trusts that certificate only.
    void trust(const std::string& caFile);

    Answer send(const std::string& method, const std::string& target, const Headers& headers = {},
                const std::string& body = {});
    Answer get(const std::string& target, const Headers& headers = {}) {
        return send("GET", target, headers);
    }
    Answer head(const std::string& target, const Headers& headers = {}) {
        return send("HEAD", target, headers);
    }
    Answer put(const std::string& target, const std::string& body, const Headers& headers = {}) {
        return send("PUT", target, headers, body);
    }
    Answer post(const std::string& target, const std::string& body, const Headers& headers = {}) {
        return send("POST", target, headers, body);
    }
    Answer remove(const std::string& target) { return send("DELETE", target); }

private:
    std::string endpoint_;
    void* easy_;
};

/// A TCP connection for what a well-behaved client wouldn't send.
class RawConnection {
public:
    explicit RawConnection(std::uint16_t port);
    ~RawConnection();
    RawConnection(const RawConnection&) = delete;
    RawConnection& operator=(const RawConnection&) = delete;

    void send(const std::string& bytes) const;
    /// Reads up to and with that text, or to the connection's end.
    std::string readThrough(const std::string& text);
    std::string readToEnd();
    /// Whether the last read ended with a reset.
    bool wasReset() const { return reset_; }

private:
    bool readMore();

    int socket_;
    std::string unread_;
    bool reset_ = false;
};

}  // namespace s3server::test
