#include <fl/i18n.hpp>
#include <foundation/storage/provider/StorageIRI.hpp>
#include <stdexcept>
#include <string>

#include "FuzzTarget.hpp"

using namespace fuzz;
using foundation::storage::provider::StorageIRI;

namespace {

/// Bytes that aren't UTF-8 are taken for UTF-16 as they are, which may be as ill-formed.
std::u16string wide(std::string_view bytes) {
    try {
        return fl::i18n::to_ustring(std::string(bytes));
    } catch (const fl::i18n::conversion_error&) {
        std::u16string units;
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                           static_cast<unsigned char>(bytes[i + 1]) << 8U);
        return units;
    }
}

void checkAddress(const StorageIRI& iri) {
    require(StorageIRI(iri.toString()) == iri, "an address is read as it is written");
    require(iri.hasHost() == !iri.getHost().empty(), "an address with a host has one");
}

}  // namespace

// The first line is an address, the second a path beside it.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto text = textOf(data, size);
    const auto lineEnd = std::min(text.find('\n'), size);
    const auto path = text.substr(std::min(lineEnd + 1, size));
    try {
        const StorageIRI iri(wide(text.substr(0, lineEnd)));
        checkAddress(iri);
        checkAddress(StorageIRI(iri, wide(path)));
    } catch (const std::invalid_argument& refusal) {
        require(*refusal.what() != '\0', "a refusal says why");
    }
    return 0;
}
