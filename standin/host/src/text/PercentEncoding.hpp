#pragma once

#include <string>
#include <string_view>

namespace standin {

/// What may stand for itself in a host name and in a path (RFC 3986, appendix A), beside letters and digits.
constexpr std::string_view hostMarks = "-._~!$&'()*+,;=";
constexpr std::string_view pathMarks = "-._~!$&'()*+,;=:@/";

/// Every "%" and two hexadecimal digits as the byte they stand for; all else as it is.
std::string percentDecoded(std::string_view text);

/// Every byte as "%" and two upper-case digits, except ASCII letters, digits and the given marks.
std::string percentEncoded(std::string_view plain, std::string_view marks);

}  // namespace standin
