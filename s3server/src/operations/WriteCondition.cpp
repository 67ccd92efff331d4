#include "operations/WriteCondition.hpp"

#include "operations/Operations.hpp"

namespace s3server {

std::function<void(const Object*)> writeCondition(const Request& request) {
    const std::string match(request.header("if-match"));
    const std::string noneMatch(request.header("if-none-match"));
    if (!noneMatch.empty() && noneMatch != "*")
        throw S3Error("NotImplemented").with("Header", "If-None-Match");
    if (!noneMatch.empty()) {
        return [](const Object* existing) {
            if (existing) throw preconditionFailed("If-None-Match");
        };
    }
    if (match.empty()) return {};
    return [match, key = request.key](const Object* existing) {
        if (!existing) throw S3Error("NoSuchKey").with("Key", key);
        if (match != "*" && match != existing->etag && match != quoted(existing->etag))
            throw preconditionFailed("If-Match");
    };
}

S3Error preconditionFailed(const std::string& condition) {
    return S3Error("PreconditionFailed").with("Condition", condition);
}

}  // namespace s3server
