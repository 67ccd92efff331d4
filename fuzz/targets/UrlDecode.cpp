#include "UrlDecode.hpp"

#include "FuzzTarget.hpp"
#include "text/Encoding.hpp"

using namespace fuzz;
using storage::s3provider::urlDecode;

// The embedded server's encoders and its strict decoder are code of their own.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(textOf(data, size));
    require(urlDecode(text).size() <= size, "decoding never grows its input");
    require(urlDecode(s3server::listingEncoded(text)) == text, "a key of a listing comes back");
    require(urlDecode(s3server::percentEncoded(text)) == text, "percent-encoded text comes back");
    const auto strict = s3server::queryDecoded(text);
    require(!strict || urlDecode(text) == *strict, "well-formed text is decoded as by the strict decoder");
    return 0;
}
