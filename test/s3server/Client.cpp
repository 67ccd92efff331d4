#include "Client.hpp"

#include <arpa/inet.h>
#include <curl/curl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <stdexcept>

namespace s3server::test {
namespace {

std::size_t appendBody(const char* data, std::size_t, std::size_t size, void* answer) {
    static_cast<Answer*>(answer)->body.append(data, size);
    return size;
}

std::size_t takeHeader(const char* data, std::size_t, std::size_t size, void* answer) {
    Headers& headers = static_cast<Answer*>(answer)->headers;
    const std::string line(data, size);
    if (line.rfind("HTTP/", 0) == 0) headers.clear();
    const auto colon = line.find(':');
    if (colon == std::string::npos) return size;
    std::string name = line.substr(0, colon);
    std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
    const auto first = line.find_first_not_of(" \t", colon + 1);
    const auto last = line.find_last_not_of(" \r\n");
    headers.emplace_back(name, first <= last ? line.substr(first, last - first + 1) : std::string());
    return size;
}

struct Source {
    const std::string& body;
    std::size_t sent = 0;
};

std::size_t readBody(char* data, std::size_t, std::size_t size, void* source) {
    auto& from = *static_cast<Source*>(source);
    const auto count = from.body.copy(data, size, from.sent);
    from.sent += count;
    return count;
}

}  // namespace

std::string Answer::header(const std::string& name) const {
    for (const auto& [given, value] : headers)
        if (given == name) return value;
    return {};
}

std::string Answer::element(const std::string& name) const {
    const auto all = elements(name);
    return all.empty() ? std::string() : all.front();
}

std::vector<std::string> Answer::elements(const std::string& name) const {
    std::vector<std::string> found;
    const std::string start = '<' + name + '>';
    for (auto at = body.find(start); at != std::string::npos; at = body.find(start, at)) {
        at += start.size();
        found.push_back(body.substr(at, body.find("</" + name + '>', at) - at));
    }
    return found;
}

Client::Client(std::string endpoint) : endpoint_(std::move(endpoint)), easy_(curl_easy_init()) {
    if (endpoint_.find("://") == std::string::npos) endpoint_.insert(0, "http://");
    curl_easy_setopt(easy_, CURLOPT_PATH_AS_IS, 1L);
    curl_easy_setopt(easy_, CURLOPT_PROXY, "");
    curl_easy_setopt(easy_, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy_, CURLOPT_HEADERFUNCTION, takeHeader);
    curl_easy_setopt(easy_, CURLOPT_WRITEFUNCTION, appendBody);
    curl_easy_setopt(easy_, CURLOPT_READFUNCTION, readBody);
}

Client::~Client() {
    curl_easy_cleanup(easy_);
}

void Client::signAs(const std::string& accessKey, const std::string& secretKey, const std::string& region) {
    curl_easy_setopt(easy_, CURLOPT_PATH_AS_IS, 0L);
    curl_easy_setopt(easy_, CURLOPT_AWS_SIGV4, ("aws:amz:" + region + ":s3").c_str());
    curl_easy_setopt(easy_, CURLOPT_USERNAME, accessKey.c_str());
    curl_easy_setopt(easy_, CURLOPT_PASSWORD, secretKey.c_str());
}

void Client::trust(const std::string& caFile) {
    curl_easy_setopt(easy_, CURLOPT_CAINFO, caFile.c_str());
}

Answer Client::send(const std::string& method, const std::string& target, const Headers& headers,
                    const std::string& body) {
    const bool uploads = method == "PUT" || method == "POST";
    curl_easy_setopt(easy_, CURLOPT_URL, (endpoint_ + target).c_str());
    curl_easy_setopt(easy_, CURLOPT_HTTPGET, 1L);
    curl_easy_setopt(easy_, CURLOPT_NOBODY, method == "HEAD" ? 1L : 0L);
    curl_easy_setopt(easy_, CURLOPT_UPLOAD, uploads ? 1L : 0L);
    curl_easy_setopt(easy_, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(easy_, CURLOPT_CUSTOMREQUEST, method.c_str());

    curl_slist* list = nullptr;
    for (const auto& [name, value] : headers)
        list = curl_slist_append(list, std::string(name).append(": ").append(value).c_str());
    const std::unique_ptr<curl_slist, void (*)(curl_slist*)> freed(list, curl_slist_free_all);
    curl_easy_setopt(easy_, CURLOPT_HTTPHEADER, list);

    Answer answer;
    Source source{body};
    curl_easy_setopt(easy_, CURLOPT_HEADERDATA, &answer);
    curl_easy_setopt(easy_, CURLOPT_WRITEDATA, &answer);
    curl_easy_setopt(easy_, CURLOPT_READDATA, &source);
    const CURLcode result = curl_easy_perform(easy_);
    if (result != CURLE_OK) answer.failure = curl_easy_strerror(result);
    long status = 0;
    curl_easy_getinfo(easy_, CURLINFO_RESPONSE_CODE, &status);
    answer.status = static_cast<int>(status);
    return answer;
}

RawConnection::RawConnection(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        throw std::runtime_error("can't connect to the server");
}

RawConnection::~RawConnection() {
    ::close(socket_);
}

void RawConnection::send(const std::string& bytes) const {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const auto count = ::send(socket_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count <= 0) return;
        sent += static_cast<std::size_t>(count);
    }
}

std::string RawConnection::readThrough(const std::string& text) {
    for (;;) {
        const auto at = unread_.find(text);
        if (at != std::string::npos) {
            std::string read = unread_.substr(0, at + text.size());
            unread_.erase(0, read.size());
            return read;
        }
        if (!readMore()) return std::exchange(unread_, {});
    }
}

std::string RawConnection::readToEnd() {
    while (readMore()) {
    }
    return std::exchange(unread_, {});
}

bool RawConnection::readMore() {
    std::array<char, 4096> buffer{};
    const auto count = ::recv(socket_, buffer.data(), buffer.size(), 0);
    reset_ = count < 0 && errno == ECONNRESET;
    if (count > 0) unread_.append(buffer.data(), static_cast<std::size_t>(count));
    return count > 0;
}

}  // namespace s3server::test
