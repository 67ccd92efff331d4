#pragma once

#include <aws/core/client/AWSError.h>
#include <aws/core/client/CoreErrors.h>

#include <string>

#include "s3/Xml.hpp"

namespace standin::aws::s3 {

using CoreError = Aws::Client::AWSError<Aws::Client::CoreErrors>;

/// The error an answer stands for (S3's "Error responses"). The code in the document decides; without one
/// it understands, or without document, the status does. The answer's status, headers and address are left
/// to be filled in.
CoreError errorWithoutBody(int status);
CoreError errorFrom(int status, const XmlDocument& document);

/// The element "Error": the root itself, a child of the root, or below a child "Errors". Null without one.
const tinyxml2::XMLElement* findError(const XmlDocument& document);

/// The error named `code`, as S3 names it: text up to "#", or from ":" on, is not part of the name.
CoreError errorNamed(const std::string& code, const std::string& message);

/// An answer that reports success with a document that isn't one. It has no status and is not retried.
CoreError xmlParseError(const std::string& parserErrorName);

/// An answer that reports success and can't be one, and what is wrong with it. Not retried: the service may
/// have done what it was asked.
CoreError unexpectedResponse(std::string_view fault);

/// A required field that was not given.
CoreError missingField(const std::string& name);

}  // namespace standin::aws::s3
