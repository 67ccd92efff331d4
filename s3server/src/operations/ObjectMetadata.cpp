#include "operations/ObjectMetadata.hpp"

#include <algorithm>
#include <array>

#include "operations/S3Error.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

constexpr std::array<std::string_view, 6> keptNames{
    "content-type",     "cache-control", "content-disposition",
    "content-language", "expires",       "content-encoding"};
constexpr std::array<std::string_view, 4> unsupportedStarts{"x-amz-server-side-encryption-customer-",
                                                            "x-amz-object-lock-", "x-amz-tagging",
                                                            "x-amz-website-redirect-location"};

bool isKept(const std::string& name) {
    return startsWith(name, "x-amz-meta-") ||
           std::find(keptNames.begin(), keptNames.end(), name) != keptNames.end();
}

/// The content codings but "aws-chunked", which was for the way here only.
std::string withoutTransferOnly(std::string_view codings) {
    std::string kept;
    for (const std::string_view piece : split(codings, ',')) {
        const auto coding = trimmed(piece);
        if (coding.empty() || coding == "aws-chunked") continue;
        if (!kept.empty()) kept += ',';
        kept += coding;
    }
    return kept;
}

}  // namespace

Headers keptHeaders(const Request& request) {
    Headers kept;
    if (request.header("content-type").empty()) kept.emplace_back("content-type", "binary/octet-stream");
    for (const auto& [name, value] : request.headers) {
        if (!isKept(name)) continue;
        std::string text = name == "content-encoding" ? withoutTransferOnly(value) : value;
        if (!text.empty()) kept.emplace_back(name, std::move(text));
    }
    return kept;
}

void refuseUnsupportedHeaders(const Request& request) {
    for (const auto& [name, value] : request.headers)
        for (const std::string_view start : unsupportedStarts)
            if (startsWith(name, start)) throw S3Error("NotImplemented").with("Header", name);
}

}  // namespace s3server
