#pragma once

#include <aws/core/utils/DateTime.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "s3/Xml.hpp"

namespace standin::aws::s3 {

using Headers = std::map<std::string, std::string>;

/// A successful answer.
struct Answer {
    Headers headers;                              ///< lower-case names
    std::unique_ptr<const XmlDocument> document;  ///< null without body, and for AnswerBody::Content
    std::string body;

    /// The document's root element, whatever its name; null without.
    const tinyxml2::XMLElement* root() const { return document ? document->root() : nullptr; }
};

bool hasRoot(const Answer& answer, std::string_view name);

/// Empty when absent.
std::string headerValue(const Headers& headers, const char* lowerCaseName);

/// An RFC 822 date; the epoch when absent.
Aws::Utils::DateTime headerDate(const Headers& headers, const char* lowerCaseName);

/// The object's own metadata, names without "x-amz-meta-".
Headers metadataIn(const Headers& headers);

/// For an operation whose answers have no document: what is wrong with an answer that has one; empty without.
std::string_view needlessDocument(const Answer& answer);

/// The number a text begins with, blanks before it skipped; 0 without one; kept inside the type's range.
long long leadingNumber(const std::string& text);

/// "1", or "true" in any letter case.
bool isTrue(const std::string& text);

/// The first child of that name as an ISO 8601 date; the epoch without one.
Aws::Utils::DateTime childDate(const tinyxml2::XMLElement* parent, const char* name);

}  // namespace standin::aws::s3
