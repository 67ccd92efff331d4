#pragma once

namespace standin {

/// Whether a code point beyond ASCII may stand unencoded in an IRI (`ucschar` of RFC 3987, without the
/// formatting characters for direction that its section 4.1 forbids).
bool isIriCharacter(char32_t codePoint);

}  // namespace standin
