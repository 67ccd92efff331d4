#include "text/IriCharacters.hpp"

#include <algorithm>
#include <iterator>

namespace standin {

namespace {

struct CodePoints {
    char32_t first;
    char32_t last;
};

// The supplementary planes 1 to 14 are computed: all but their last two code points, which are no characters.
constexpr CodePoints inBasicPlane[] = {
    {0xA0, 0x200D}, {0x2010, 0x2029}, {0x202F, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFEF}};

}  // namespace

bool isIriCharacter(char32_t codePoint) {
    if (codePoint >= 0x10000)
        return codePoint < 0xF0000 && (codePoint & 0xFFFF) < 0xFFFE &&
               !(codePoint >= 0xE0000 && codePoint < 0xE1000);
    return std::any_of(
        std::begin(inBasicPlane), std::end(inBasicPlane),
        [codePoint](const CodePoints& range) { return codePoint >= range.first && codePoint <= range.last; });
}

}  // namespace standin
