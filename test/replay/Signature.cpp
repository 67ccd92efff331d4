#include "replay/Signature.hpp"

#include "replay/Digest.hpp"

#include <boost/algorithm/string.hpp>

#include <algorithm>
#include <regex>

namespace replay {
namespace {

using testsupport::SeenRequest;

struct Authorization {
    std::string scope;  // access key, day, region, service, "aws4_request", with slashes between
    std::vector<std::string> signedHeaders;
    std::string signature;
};

bool parse(const std::string& header, Authorization& parsed) {
    static const std::regex form(
        "AWS4-HMAC-SHA256 Credential=([^,]*), SignedHeaders=([^,]*), Signature=(.*)");
    std::smatch found;
    if (!std::regex_match(header, found, form)) return false;
    parsed.scope = found[1];
    const std::string names = found[2];
    boost::split(parsed.signedHeaders, names, boost::is_any_of(";"));
    parsed.signature = found[3];
    return true;
}

bool isUnreserved(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
           std::string_view("-_.~").find(c) != std::string_view::npos;
}

std::string decoded(const std::string& path) {
    std::string bytes;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (path[i] == '%' && i + 2 < path.size()) {
            bytes += static_cast<char>(std::stoi(path.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            bytes += path[i];
        }
    }
    return bytes;
}

std::string encoded(const std::string& bytes) {
    std::string path;
    for (const char c : bytes) {
        if (isUnreserved(c) || c == '/')
            path += c;
        else
            path += "%" + boost::to_upper_copy(toHex({&c, 1}));
    }
    return path;
}

std::string withoutOrigin(const std::string& target) {
    static const std::regex origin("^[a-z]+://[^/?]*");
    return std::regex_replace(target, origin, "");
}

std::string canonicalQuery(const std::string& query) {
    if (query.empty()) return query;
    std::vector<std::string> parameters;
    boost::split(parameters, query, boost::is_any_of("&"));
    for (std::string& parameter : parameters)
        if (parameter.find('=') == std::string::npos) parameter += '=';
    std::sort(parameters.begin(), parameters.end());
    return boost::join(parameters, "&");
}

std::string canonicalRequest(const SeenRequest& request, const Authorization& authorization,
                             const std::string& path, const std::string& query) {
    std::string text = request.method + "\n" + path + "\n" + canonicalQuery(query) + "\n";
    for (const std::string& name : authorization.signedHeaders)
        text += name + ":" + boost::trim_copy(request.header(name)) + "\n";
    return text + "\n" + boost::join(authorization.signedHeaders, ";") + "\n" +
           request.header("x-amz-content-sha256");
}

std::string signatureOf(const std::string& canonicalRequest, const SeenRequest& request,
                        const Authorization& authorization, const std::string& secretKey) {
    std::vector<std::string> scope;
    boost::split(scope, authorization.scope, boost::is_any_of("/"));
    scope.erase(scope.begin());
    std::string key = "AWS4" + secretKey;
    for (const std::string& part : scope)
        key = hmacSha256(key, part);
    return toHex(hmacSha256(key, "AWS4-HMAC-SHA256\n" + request.header("x-amz-date") + "\n" +
                                     boost::join(scope, "/") + "\n" + sha256Hex(canonicalRequest)));
}

}  // namespace

Json describeSignature(const SeenRequest& request, const std::string& secretKey) {
    Authorization authorization;
    if (!parse(request.header("authorization"), authorization)) return nullptr;
    const std::string target = withoutOrigin(request.target);
    const std::size_t mark = std::min(target.find('?'), target.size());
    const std::string path = target.substr(0, mark);
    const std::string query = mark < target.size() ? target.substr(mark + 1) : "";
    const auto verifies = [&](const std::string& canonicalPath) {
        return authorization.signature ==
               signatureOf(canonicalRequest(request, authorization, canonicalPath, query), request,
                           authorization, secretKey);
    };
    return {{"credential_scope", authorization.scope},
            {"signed_headers", authorization.signedHeaders},
            {"verifies_path_as_sent", verifies(path)},
            {"verifies_path_decoded_then_encoded", verifies(encoded(decoded(path)))}};
}

}  // namespace replay
