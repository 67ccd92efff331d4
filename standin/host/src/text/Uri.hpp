#pragma once

#include <cstddef>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace standin {

/// The text is no absolute URI. The message tells why, without place and without quoting it.
class UriSyntaxError : public std::invalid_argument {
public:
    UriSyntaxError(const char* reason, std::size_t byte) : std::invalid_argument(reason), byte_(byte) {}

    /// Where, in bytes from 0; the text's length when something is missing at the end.
    std::size_t byte() const { return byte_; }

private:
    std::size_t byte_;
};

/// An absolute URI (RFC 3986) taken apart, in its normal form: scheme in lower case, dot segments removed,
/// percent-encoding in upper case and not of unreserved characters. The host keeps its case.
struct Uri {
    std::string scheme;
    std::optional<std::string> userInfo;
    std::optional<std::string> host;  ///< none without "//"; an IP literal in its brackets
    std::optional<std::string> port;
    std::string path;
    std::optional<std::string> query;
    std::optional<std::string> fragment;
};

/// Throws UriSyntaxError for what isn't an absolute URI.
Uri parseUri(std::string_view text);

/// The parts put together again (RFC 3986, section 5.3).
std::string toString(const Uri& uri);

}  // namespace standin
