#pragma once

#include <fl/i18n.hpp>
#include <string>

namespace storage::s3provider {

/// The value of an environment variable in UTF-8, bytes that aren't text replaced; empty when it isn't set.
inline std::string environmentText(const char* variable) {
    return fl::i18n::to_string(fl::i18n::getenv(variable));
}

}  // namespace storage::s3provider
