#include <sstream>

#include "S3CloudClient.hpp"
#include "SdkClient.hpp"
#include "Subject.hpp"

namespace bench {
namespace {

/// With logging as it is by default: off.
class ClientSubject : public Subject {
public:
    ClientSubject(const Target& target, const std::string& content)
        : client_(target.bucket, makeSdkClient(target), {5, 1000}, target.region),
          body_(content),
          size_(content.size()) {}

    std::uint64_t head(const std::string& key) override {
        const auto entry = client_.stat(key);
        return entry ? static_cast<std::uint64_t>(entry->size) : 0;
    }

    std::uint64_t get(const std::string& key, std::uint64_t first, std::uint64_t last, Sink& sink) override {
        sink.clear();
        std::ostream out(&sink);
        client_.download(key, out, first, last);
        return sink.filled();
    }

    std::uint64_t put(const std::string& key) override {
        client_.upload(key, body_, size_);
        return size_;
    }

    std::uint64_t list(const std::string& prefix) override {
        std::string continuationToken;
        return client_.list(prefix, continuationToken, {}).size();
    }

private:
    SdkLifetime sdk_;
    storage::s3provider::S3CloudClient client_;
    std::istringstream body_;
    std::uint64_t size_;
};

}  // namespace

std::unique_ptr<Subject> makeClientSubject(const Target& target, const std::string& content) {
    return std::make_unique<ClientSubject>(target, content);
}

}  // namespace bench
