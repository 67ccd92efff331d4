#include "Text.hpp"

#include <boost/date_time/posix_time/posix_time.hpp>

namespace s3vfs {

std::string printable(const std::string& text) {
    constexpr const char* digits = "0123456789abcdef";
    std::string line;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            line += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
        } else {
            line += c;
        }
    }
    return line;
}

std::string timestamp(const boost::posix_time::ptime& time) {
    return boost::posix_time::to_iso_extended_string(time) + "Z";
}

}  // namespace s3vfs
