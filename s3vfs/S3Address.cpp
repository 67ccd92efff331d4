#include "S3Address.hpp"

#include <string_view>

#include "Text.hpp"
#include "UsageError.hpp"

namespace s3vfs {

S3Address parseS3Address(const std::string& text) {
    constexpr std::string_view scheme = "s3://";
    if (text.compare(0, scheme.size(), scheme) != 0) {
        throw UsageError("'" + printable(text) + "' is no address of S3: write s3://BUCKET/KEY");
    }
    const auto slash = text.find('/', scheme.size());
    S3Address address{text.substr(scheme.size(), slash - scheme.size()),
                      slash == std::string::npos ? "" : text.substr(slash + 1)};
    if (address.bucket.empty()) {
        throw UsageError("'" + printable(text) + "' names no bucket: write s3://BUCKET/KEY");
    }
    return address;
}

S3Address parseObjectAddress(const std::string& text) {
    auto address = parseS3Address(text);
    if (address.key.empty()) {
        throw UsageError("'" + printable(text) + "' names no object: write s3://" +
                         printable(address.bucket) + "/KEY");
    }
    return address;
}

}  // namespace s3vfs
