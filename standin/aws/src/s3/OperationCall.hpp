#pragma once

#include <aws/core/http/HttpTypes.h>

#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "s3/Answer.hpp"

namespace standin::aws::s3 {

/// What a successful answer's body is.
enum class AnswerBody {
    Content,  ///< the caller's bytes
    Length,   ///< none: the head tells how long the object is
    Document  ///< XML, or nothing; a document "Error" reports a failure although the status is a success
};

/// What is wrong with a successful answer; empty when nothing is.
using AnswerCheck = std::string_view (*)(const Answer& answer);

/// One call of an operation, before it is known where it goes. Names and values are not encoded.
class OperationCall {
public:
    OperationCall(Aws::Http::HttpMethod httpMethod, AnswerBody kind)
        : method(httpMethod),
          answerBody(kind),
          faultOf(kind == AnswerBody::Document ? needlessDocument : nullptr) {}

    Aws::Http::HttpMethod method;
    AnswerBody answerBody;
    /// An answer with a fault is none, whatever its status. Null: any will do.
    AnswerCheck faultOf;
    std::string bucket;
    std::string key;          ///< empty: the call is about the bucket
    std::string subresource;  ///< a query name without "=", as "uploads"; empty: none
    std::vector<std::pair<std::string, std::string>> query;
    std::map<std::string, std::string> headers;  ///< lower-case names
    std::shared_ptr<std::iostream> body;         ///< null: none
    bool sendMd5 = false;
    std::string missingField;  ///< the first required field that was not given; empty: none

    /// Notes the field as missing unless it is there or another one was missing before.
    void require(bool isThere, const char* field) {
        if (!isThere && missingField.empty()) missingField = field;
    }
};

/// A call about a bucket.
template <typename Request>
OperationCall bucketCall(Aws::Http::HttpMethod method, AnswerBody answerBody, const Request& request) {
    OperationCall call(method, answerBody);
    call.require(request.BucketHasBeenSet(), "Bucket");
    call.bucket = request.GetBucket();
    call.headers = {{"content-type", "application/xml"}, {"x-amz-api-version", "2006-03-01"}};
    return call;
}

/// A call about an object. An empty bucket or key is no object: without this the call would address
/// the bucket named by the key's beginning, or the bucket instead of what is in it.
template <typename Request>
OperationCall objectCall(Aws::Http::HttpMethod method, AnswerBody answerBody, const Request& request) {
    OperationCall call = bucketCall(method, answerBody, request);
    call.require(!request.GetBucket().empty(), "Bucket");
    call.require(!request.GetKey().empty(), "Key");
    call.key = request.GetKey();
    return call;
}

/// A call that sends an object's bytes.
template <typename Request>
OperationCall sendingCall(const Request& request) {
    OperationCall call = objectCall(Aws::Http::HttpMethod::HTTP_PUT, AnswerBody::Document, request);
    call.headers = {{"content-type", request.GetContentType()}};
    if (request.ContentLengthHasBeenSet()) {
        call.headers["content-length"] = std::to_string(request.GetContentLength());
    }
    call.body = request.GetBody();
    call.sendMd5 = true;
    return call;
}

}  // namespace standin::aws::s3
