#include "NumberParsing.hpp"

#include <cstdlib>
#include <fl/i18n.hpp>
#include <limits>
#include <stdexcept>

namespace storage::s3provider {

int parseInt(const std::string& text) {
    char* end = nullptr;
    const long long value = std::strtoll(text.c_str(), &end, 10);  // what it can't hold is its own limit
    if (end == text.c_str()) throw std::invalid_argument("invalid stoi argument");
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max()) {
        throw std::out_of_range("stoi argument out of range");
    }
    return static_cast<int>(value);
}

std::int64_t readNumber(const NumberSetting& setting, void (*reportFailure)(const NumberSetting&)) {
    try {
        const std::u16string value = fl::i18n::getenv(setting.variable);
        return value.empty() ? setting.defaultValue : parseInt(fl::i18n::ustring_to_utf8(value));
    } catch (...) {
        reportFailure(setting);
        return setting.defaultValue;
    }
}

}  // namespace storage::s3provider
