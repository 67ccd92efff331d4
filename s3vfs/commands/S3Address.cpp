#include "commands/S3Address.hpp"

#include <fl/i18n.hpp>
#include <string_view>

#include "messages/Text.hpp"
#include "messages/UsageError.hpp"

namespace s3vfs {

using foundation::storage::provider::StorageIRI;

namespace {

UsageError unusable(const std::string& text, const std::string& why) {
    return UsageError("'" + printable(text) + "' " + why);
}

void requireUtf8(const std::string& text) {
    try {
        (void)fl::i18n::to_ustring(text);
    } catch (const fl::i18n::conversion_error&) {
        throw unusable(text, "is not UTF-8, as addresses of S3 are");
    }
}

bool isUnreserved(char c) {
    constexpr std::string_view unreserved =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    return unreserved.find(c) != std::string_view::npos;
}

std::string percentEncoded(const std::string& text) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (isUnreserved(c)) {
            encoded += c;
        } else {
            encoded += {'%', digits[byte / 16], digits[byte % 16]};
        }
    }
    return encoded;
}

}  // namespace

StorageIRI S3Address::bucketIri() const {
    return StorageIRI(fl::i18n::to_ustring("s3://" + percentEncoded(bucket) + "/"));
}

std::u16string S3Address::path() const {
    return fl::i18n::to_ustring("/" + key);
}

S3Address parseS3Address(const std::string& text) {
    constexpr std::string_view scheme = "s3://";
    if (text.compare(0, scheme.size(), scheme) != 0) {
        throw unusable(text, "is no address of S3: write s3://BUCKET/KEY");
    }
    requireUtf8(text);
    const auto slash = text.find('/', scheme.size());
    S3Address address{text.substr(scheme.size(), slash - scheme.size()),
                      slash == std::string::npos ? "" : text.substr(slash + 1)};
    if (address.bucket.empty()) throw unusable(text, "names no bucket: write s3://BUCKET/KEY");
    return address;
}

S3Address parseFileAddress(const std::string& text) {
    auto address = parseS3Address(text);
    if (address.key.empty()) {
        throw unusable(text, "names no file: write s3://" + printable(address.bucket) + "/KEY");
    }
    if (address.key.back() == '/') throw unusable(text, "names a folder, where a file is needed");
    return address;
}

}  // namespace s3vfs
