#include "operations/Operations.hpp"

#include <limits>

#include "operations/S3Error.hpp"
#include "text/Text.hpp"

namespace s3server {

Reply xmlReply(const XmlWriter& xml) {
    return {200, {{"Content-Type", "application/xml"}}, Bytes(xml.document())};
}

std::uint64_t numberParameter(const Request& request, const std::string& name, std::uint64_t otherwise) {
    const std::string* const text = request.parameter(name);
    if (!text) return otherwise;
    const auto number = parseNumber(*text);
    if (number && *number <= std::numeric_limits<std::int32_t>::max()) return *number;
    throw S3Error("InvalidArgument")
        .saying("Provided " + name + " not an integer or within integer range")
        .with("ArgumentName", name)
        .with("ArgumentValue", *text);
}

std::string quoted(const std::string& etag) {
    return '"' + etag + '"';
}

}  // namespace s3server
