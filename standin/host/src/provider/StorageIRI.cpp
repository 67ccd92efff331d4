#include "foundation/storage/provider/StorageIRI.hpp"

#include "fl/i18n.hpp"
#include "text/IriCharacters.hpp"
#include "text/PercentEncoding.hpp"
#include "text/Uri.hpp"

#include <utf8.h>

#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace foundation::storage::provider {

namespace {

using standin::percentDecoded;
using standin::percentEncoded;
using standin::Uri;

std::invalid_argument notAnIri(const std::string& reason) {
    return std::invalid_argument("not an absolute IRI: " + reason);
}

std::string utf8Of(const std::u16string& text) {
    try {
        return fl::i18n::to_string(text);
    } catch (const fl::i18n::conversion_error& error) {
        throw notAnIri(error.what());
    }
}

std::u16string decoded(std::string_view part) {
    try {
        return fl::i18n::to_ustring(percentDecoded(part));
    } catch (const fl::i18n::conversion_error&) {
        throw notAnIri("percent-encoded bytes that aren't UTF-8");
    }
}

/// Calls `visit(bytes, codePoint)` for each character of well-formed UTF-8.
template <typename Visit>
void forEachCharacter(std::string_view utf8, Visit visit) {
    for (const char* at = utf8.data(); at != utf8.data() + utf8.size();) {
        const char* const first = at;
        const char32_t codePoint = utf8::unchecked::next(at);
        visit(std::string_view(first, static_cast<std::size_t>(at - first)), codePoint);
    }
}

/// An IRI as a URI (RFC 3987, section 3.1), with the UTF-16 code unit that each of its bytes comes from.
struct Mapped {
    std::string uri;
    std::vector<std::size_t> codeUnits;
};

Mapped mapToUri(std::string_view iri) {
    Mapped mapped;
    std::size_t codeUnit = 0;
    forEachCharacter(iri, [&](std::string_view bytes, char32_t codePoint) {
        // Outside of ASCII, what isn't an IRI's character is left for the parser to find.
        mapped.uri += standin::isIriCharacter(codePoint) ? percentEncoded(bytes, "") : std::string(bytes);
        mapped.codeUnits.resize(mapped.uri.size(), codeUnit);
        codeUnit += codePoint > 0xFFFF ? 2 : 1;
    });
    mapped.codeUnits.push_back(codeUnit);
    return mapped;
}

std::string normalUri(const std::u16string& iri) {
    const Mapped mapped = mapToUri(utf8Of(iri));
    try {
        return toString(standin::parseUri(mapped.uri));
    } catch (const standin::UriSyntaxError& error) {
        const auto codeUnit = mapped.codeUnits.at(error.byte());
        throw notAnIri(std::string(error.what()) + " at code unit " + std::to_string(codeUnit));
    }
}

std::string besideLastSegment(const Uri& base, const std::string& path) {
    const auto folderSize = base.path.rfind('/') + 1;  // 0 without a slash
    if (base.host && folderSize == 0) return "/" + path;
    return base.path.substr(0, folderSize) + path;
}

std::string resolved(Uri base, const std::u16string& plainPath) {
    const std::string path = percentEncoded(utf8Of(plainPath), standin::pathMarks);
    if (!path.empty()) base.path = path.front() == '/' ? path : besideLastSegment(base, path);
    base.query.reset();
    base.fragment.reset();
    return toString(standin::parseUri(toString(base)));
}

/// The percent-encoded bytes outside of ASCII, decoded.
std::string withoutEncodedUnicode(const std::string& uri) {
    std::string shown;
    for (std::size_t i = 0; i < uri.size(); ++i) {
        const bool encoded = uri[i] == '%' && uri[i + 1] >= '8';
        shown += encoded ? percentDecoded(uri.substr(i, 3)) : uri.substr(i, 1);
        if (encoded) i += 2;
    }
    return shown;
}

}  // namespace

StorageIRI::StorageIRI(const std::u16string& text) : StorageIRI(normalUri(text)) {}

StorageIRI::StorageIRI(const StorageIRI& base, const std::u16string& path)
    : StorageIRI(resolved(standin::parseUri(base.uri_), path)) {}

StorageIRI::StorageIRI(const std::string& normalUri) : uri_(normalUri) {
    const Uri uri = standin::parseUri(uri_);
    host_ = decoded(uri.host.value_or(""));
    path_ = decoded(uri.path);
    (void)decoded(uri_);  // so that toString() finds UTF-8 everywhere
}

std::u16string StorageIRI::toString() const {
    std::string iri;
    forEachCharacter(withoutEncodedUnicode(uri_), [&iri](std::string_view bytes, char32_t codePoint) {
        const bool plain = codePoint < 0x80 || standin::isIriCharacter(codePoint);
        iri += plain ? std::string(bytes) : percentEncoded(bytes, "");
    });
    return fl::i18n::to_ustring(iri);
}

}  // namespace foundation::storage::provider
