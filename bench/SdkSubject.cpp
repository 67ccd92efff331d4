#include <aws/s3/model/GetObjectRequest.h>
#include <aws/s3/model/HeadObjectRequest.h>
#include <aws/s3/model/ListObjectsV2Request.h>
#include <aws/s3/model/PutObjectRequest.h>

#include <sstream>
#include <stdexcept>

#include "SdkClient.hpp"
#include "Subject.hpp"

namespace bench {
namespace {

using namespace Aws::S3::Model;

class SdkSubject : public Subject {
public:
    SdkSubject(const Target& target, const std::string& content)
        : client_(makeSdkClient(target)),
          bucket_(target.bucket),
          body_(std::make_shared<std::stringstream>(content)),
          size_(content.size()) {}

    std::uint64_t head(const std::string& key) override {
        const auto outcome = client_->HeadObject(about<HeadObjectRequest>(key));
        return static_cast<std::uint64_t>(succeeded(outcome).GetResult().GetContentLength());
    }

    std::uint64_t get(const std::string& key, std::uint64_t first, std::uint64_t last, Sink& sink) override {
        sink.clear();
        auto request = about<GetObjectRequest>(key);
        if (first < last) request.SetRange("bytes=" + std::to_string(first) + '-' + std::to_string(last));
        const auto outcome = client_->GetObject(request);
        std::ostream out(&sink);
        out << succeeded(outcome).GetResult().GetBody().rdbuf();
        return sink.filled();
    }

    std::uint64_t put(const std::string& key) override {
        auto request = about<PutObjectRequest>(key);
        body_->clear();  // of the end reached the time before
        body_->seekg(0);
        request.SetBody(body_);
        succeeded(client_->PutObject(request));
        return size_;
    }

    std::uint64_t list(const std::string& prefix) override {
        ListObjectsV2Request request;
        request.SetBucket(bucket_);
        request.SetPrefix(prefix);
        request.SetEncodingType(EncodingType::url);
        const auto outcome = client_->ListObjectsV2(request);
        return succeeded(outcome).GetResult().GetContents().size();
    }

private:
    template <typename Request>
    Request about(const std::string& key) const {
        Request request;
        request.SetBucket(bucket_);
        request.SetKey(key);
        return request;
    }

    template <typename Outcome>
    static const Outcome& succeeded(const Outcome& outcome) {
        if (!outcome.IsSuccess()) throw std::runtime_error(outcome.GetError().GetMessage());
        return outcome;
    }

    SdkLifetime sdk_;
    std::shared_ptr<Aws::S3::S3Client> client_;
    std::string bucket_;
    std::shared_ptr<std::stringstream> body_;
    std::uint64_t size_;
};

}  // namespace

std::unique_ptr<Subject> makeSdkSubject(const Target& target, const std::string& content) {
    return std::make_unique<SdkSubject>(target, content);
}

}  // namespace bench
