#pragma once

#include <stdexcept>
#include <string>

/// Conversions between UTF-8 (std::string), UTF-16 (std::u16string) and wide text (UTF-32). Embedded NULs
/// are characters like any other. All functions may be called from any thread.
namespace fl::i18n {

/// The text is ill-formed: not UTF-8, or a surrogate without its partner in UTF-16. The message tells where,
/// in bytes or code units from 0, and never quotes the text, which may be a secret.
class conversion_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The value of an environment variable; empty when it isn't set. Never fails: what isn't UTF-8 in the
/// value becomes U+FFFD. The environment must not be changed by another thread meanwhile.
std::u16string getenv(const std::string& name);

/// @{ UTF-16 as UTF-8. Throws conversion_error.
std::string to_string(const std::u16string& text);
std::string ustring_to_utf8(const std::u16string& text);
/// @}

/// @{ UTF-8 as UTF-16. Throws conversion_error. The pointer form takes a NUL-terminated text, not null.
std::u16string to_ustring(const char* text);
std::u16string to_ustring(const std::string& text);
/// @}

/// Wide text as UTF-16. Throws conversion_error for what is no code point.
std::u16string to_ustring(const std::wstring& text);

/// UTF-16 as wide text, one wchar_t a code point. Throws conversion_error.
std::wstring to_wstring(const std::u16string& text);

}  // namespace fl::i18n
