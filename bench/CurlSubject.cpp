#include <curl/curl.h>
#include <openssl/rand.h>
#include <tinyxml2.h>

#include <cstring>
#include <ctime>
#include <stdexcept>

#include "RequestSignature.hpp"
#include "Subject.hpp"

namespace bench {
namespace {

/// The stand-in's, so that both make the same system calls.
constexpr long bufferSize = 131072;
constexpr const char* userAgent = "s3provider-bench/1.0";

struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

struct CloseHandle {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};

struct Upload {
    const std::string& content;
    std::size_t sent = 0;
};

std::size_t discard(char*, std::size_t size, std::size_t count, void*) {
    return size * count;
}

std::size_t fillSink(char* bytes, std::size_t size, std::size_t count, void* sink) {
    return static_cast<Sink*>(sink)->add(bytes, size * count) ? size * count : 0;
}

std::size_t fillText(char* bytes, std::size_t size, std::size_t count, void* text) {
    static_cast<std::string*>(text)->append(bytes, size * count);
    return size * count;
}

std::size_t send(char* buffer, std::size_t size, std::size_t count, void* source) {
    auto& upload = *static_cast<Upload*>(source);
    const std::size_t sent = std::min(size * count, upload.content.size() - upload.sent);
    upload.content.copy(buffer, sent, upload.sent);
    upload.sent += sent;
    return sent;
}

std::string base64(const std::string& bytes) {
    std::string text(4 * ((bytes.size() + 2) / 3) + 1, '\0');
    const int size =
        EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                        reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(size));
    return text;
}

std::string now() {
    const std::time_t time = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&time, &utc);
    char text[17];
    std::strftime(text, sizeof text, "%Y%m%dT%H%M%SZ", &utc);
    return text;
}

std::string randomId() {
    std::string bytes(16, '\0');
    RAND_bytes(reinterpret_cast<unsigned char*>(bytes.data()), 16);
    return hex(bytes);
}

class CurlSubject : public Subject {
public:
    CurlSubject(const Target& target, std::string content)
        : endpoint_(target.endpoint),
          host_(target.endpoint.substr(target.endpoint.find("//") + 2)),
          bucketPath_('/' + target.bucket),
          content_(std::move(content)),
          signature_(target.accessKey, target.secretKey, target.region),
          handle_(curl_easy_init()) {
        set(CURLOPT_BUFFERSIZE, bufferSize);
        set(CURLOPT_UPLOAD_BUFFERSIZE, bufferSize);
        set(CURLOPT_PROXY, "");
        set(CURLOPT_NOSIGNAL, 1L);
        if (!target.caFile.empty()) set(CURLOPT_CAINFO, target.caFile.c_str());
    }

    std::uint64_t head(const std::string& key) override {
        set(CURLOPT_NOBODY, 1L);
        receive(&discard, nullptr);
        perform({"HEAD", bucketPath_ + '/' + key, "", "", signs() ? hex(sha256("")) : unsignedPayload, ""});
        curl_off_t size = -1;
        curl_easy_getinfo(handle_.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &size);
        return static_cast<std::uint64_t>(size);
    }

    std::uint64_t get(const std::string& key, std::uint64_t first, std::uint64_t last, Sink& sink) override {
        set(CURLOPT_HTTPGET, 1L);
        sink.clear();
        receive(&fillSink, &sink);
        const std::string range =
            first < last ? "bytes=" + std::to_string(first) + '-' + std::to_string(last) : "";
        perform({"GET", bucketPath_ + '/' + key, "", range, signs() ? hex(sha256("")) : unsignedPayload, ""});
        return sink.filled();
    }

    std::uint64_t put(const std::string& key) override {
        Upload upload{content_};
        set(CURLOPT_UPLOAD, 1L);
        set(CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(content_.size()));
        set(CURLOPT_READFUNCTION, &send);
        set(CURLOPT_READDATA, &upload);
        receive(&discard, nullptr);
        perform({"PUT", bucketPath_ + '/' + key, "", "", signs() ? hex(sha256(content_)) : unsignedPayload,
                 base64(md5(content_))});
        return upload.sent;
    }

    std::uint64_t list(const std::string& prefix) override {
        set(CURLOPT_HTTPGET, 1L);
        page_.clear();
        receive(&fillText, &page_);
        perform({"GET", bucketPath_, "encoding-type=url&list-type=2&prefix=" + escaped(prefix), "",
                 signs() ? hex(sha256("")) : unsignedPayload, ""});
        tinyxml2::XMLDocument document;
        document.Parse(page_.data(), page_.size());
        std::uint64_t keys = 0;
        for (const auto* each = document.RootElement()->FirstChildElement("Contents"); each != nullptr;
             each = each->NextSiblingElement("Contents"))
            ++keys;
        return keys;
    }

    const std::string& page() const { return page_; }

private:
    struct Request {
        std::string method;
        std::string path;
        std::string query;
        std::string range;
        std::string payloadHash;
        std::string md5;
    };

    static constexpr const char* unsignedPayload = "UNSIGNED-PAYLOAD";

    /// TLS protects what is sent as well as a digest does.
    bool signs() const { return endpoint_.rfind("http://", 0) == 0; }

    template <typename Value>
    void set(CURLoption option, Value value) {
        if (curl_easy_setopt(handle_.get(), option, value) != CURLE_OK)
            throw std::runtime_error("libcurl option");
    }

    void receive(curl_write_callback callback, void* target) {
        set(CURLOPT_WRITEFUNCTION, callback);
        set(CURLOPT_WRITEDATA, target);
    }

    std::string escaped(const std::string& text) {
        const std::unique_ptr<char, decltype(&curl_free)> owned(
            curl_easy_escape(handle_.get(), text.data(), static_cast<int>(text.size())), &curl_free);
        return owned.get();
    }

    HeaderLines headersOf(const Request& request, const std::string& date) const {
        HeaderLines headers{{"amz-sdk-invocation-id", randomId()}, {"amz-sdk-request", "attempt=1"}};
        if (!request.md5.empty()) {
            headers.emplace_back("content-length", std::to_string(content_.size()));
            headers.emplace_back("content-md5", request.md5);
        }
        headers.emplace_back("content-type", request.md5.empty() ? "application/xml" : "binary/octet-stream");
        headers.emplace_back("host", host_);
        if (!request.range.empty()) headers.emplace_back("range", request.range);
        if (request.md5.empty()) headers.emplace_back("x-amz-api-version", "2006-03-01");
        headers.emplace_back("x-amz-content-sha256", request.payloadHash);
        headers.emplace_back("x-amz-date", date);
        return headers;
    }

    void perform(const Request& request) {
        const std::string date = now();
        HeaderLines headers = headersOf(request, date);
        headers.emplace_back("authorization", signature_.sign(request.method, request.path, request.query,
                                                              headers, date, request.payloadHash));
        headers.emplace_back("user-agent", userAgent);
        std::unique_ptr<curl_slist, FreeList> lines;
        for (const auto& [name, value] : headers) {
            std::string line = name;
            line.append(": ").append(value);
            lines.reset(curl_slist_append(lines.release(), line.c_str()));
        }
        set(CURLOPT_HTTPHEADER, lines.get());
        const std::string query = request.query.empty() ? "" : '?' + request.query;
        set(CURLOPT_URL, (endpoint_ + request.path + query).c_str());
        const CURLcode code = curl_easy_perform(handle_.get());
        long status = 0;
        curl_easy_getinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &status);
        set(CURLOPT_HTTPHEADER, nullptr);
        if (code != CURLE_OK) throw std::runtime_error(curl_easy_strerror(code));
        if (status / 100 != 2) throw std::runtime_error("status " + std::to_string(status));
    }

    std::string endpoint_;
    std::string host_;
    std::string bucketPath_;
    std::string content_;
    std::string page_;
    RequestSignature signature_;
    std::unique_ptr<CURL, CloseHandle> handle_;
};

class ListingParse : public Subject {
public:
    explicit ListingParse(const Target& target) : source_(target, "") {}

    std::uint64_t head(const std::string&) override { throw std::logic_error("only lists"); }
    std::uint64_t get(const std::string&, std::uint64_t, std::uint64_t, Sink&) override { return head(""); }
    std::uint64_t put(const std::string&) override { return head(""); }

    std::uint64_t list(const std::string& prefix) override {
        if (source_.page().empty()) keys_ = source_.list(prefix);
        tinyxml2::XMLDocument document;
        document.Parse(source_.page().data(), source_.page().size());
        return document.Error() ? 0 : keys_;
    }

private:
    CurlSubject source_;
    std::uint64_t keys_ = 0;
};

}  // namespace

std::unique_ptr<Subject> makeCurlSubject(const Target& target, std::string content) {
    return std::make_unique<CurlSubject>(target, std::move(content));
}

std::unique_ptr<Subject> makeListingParse(const Target& target) {
    return std::make_unique<ListingParse>(target);
}

}  // namespace bench
