#include "store/Checksums.hpp"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <boost/crc.hpp>

#include "operations/S3Error.hpp"
#include "text/Digest.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

template <class Number>
std::string bigEndian(Number number) {
    std::string bytes(sizeof number, '\0');
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte, number >>= 8U)
        *byte = static_cast<char>(number & 255U);
    return bytes;
}

std::string crc32Of(const Bytes& body) {
    uLong sum = crc32(0, nullptr, 0);
    for (const auto& segment : body.segments())
        sum = crc32_z(sum, reinterpret_cast<const Bytef*>(segment.data.get()), segment.size);
    return bigEndian(static_cast<std::uint32_t>(sum));
}

using Crc32c = boost::crc_optimal<32, 0x1EDC6F41, 0xFFFFFFFF, 0xFFFFFFFF, true, true>;
using Crc64Nvme =
    boost::crc_optimal<64, 0xAD93D23594C93659, 0xFFFFFFFFFFFFFFFF, 0xFFFFFFFFFFFFFFFF, true, true>;

template <class Crc>
std::string crcOf(const Bytes& body) {
    Crc sum;
    for (const auto& segment : body.segments())
        sum.process_bytes(segment.data.get(), segment.size);
    return bigEndian(sum.checksum());
}

struct Algorithm {
    std::string_view header;
    std::string (*compute)(const Bytes&);
};

constexpr std::string_view headerStart = "x-amz-checksum-";
constexpr std::array algorithms{
    Algorithm{"x-amz-checksum-crc32", crc32Of},
    Algorithm{"x-amz-checksum-crc32c", crcOf<Crc32c>},
    Algorithm{"x-amz-checksum-crc64nvme", crcOf<Crc64Nvme>},
    Algorithm{"x-amz-checksum-sha1", [](const Bytes& body) { return digestOf(Digest::sha1(), body); }},
    Algorithm{"x-amz-checksum-sha256", [](const Bytes& body) { return digestOf(Digest::sha256(), body); }},
};
// These say something about a checksum, and are none.
constexpr std::array<std::string_view, 3> notChecksums{"x-amz-checksum-algorithm", "x-amz-checksum-mode",
                                                       "x-amz-checksum-type"};

void checkMd5(std::string_view header, const std::string& md5) {
    const auto expected = fromBase64(header);
    if (!expected || expected->size() != md5.size()) {
        throw S3Error("InvalidDigest").with("Content-MD5", std::string(header));
    }
    if (*expected == md5) return;
    throw S3Error("BadDigest")
        .with("ExpectedDigest", std::string(header))
        .with("CalculatedDigest", base64(md5));
}

void checkOne(const std::string& name, const std::string& value, const Bytes& body) {
    const auto* const algorithm = std::find_if(
        algorithms.begin(), algorithms.end(), [&name](const Algorithm& each) { return each.header == name; });
    if (algorithm == algorithms.end()) throw S3Error("NotImplemented").with("Header", name);
    const std::string computed = algorithm->compute(body);
    const auto expected = fromBase64(value);
    if (!expected || expected->size() != computed.size())
        throw S3Error("InvalidRequest").saying("Value for " + name + " header is invalid.");
    if (*expected == computed) return;
    throw S3Error("BadDigest")
        .saying("The " + name.substr(headerStart.size()) +
                " you specified did not match the calculated checksum.");
}

}  // namespace

void checkChecksums(const Headers& headers, const Bytes& body, const std::string& md5) {
    for (const auto& [name, value] : headers) {
        if (name == "content-md5") checkMd5(value, md5);
        const bool isChecksum =
            startsWith(name, headerStart) &&
            std::find(notChecksums.begin(), notChecksums.end(), name) == notChecksums.end();
        if (isChecksum) checkOne(name, value, body);
    }
}

}  // namespace s3server
