#include "s3/ErrorMarshalling.hpp"

#include <aws/core/http/HttpResponse.h>
#include <aws/s3/S3Errors.h>

namespace standin::aws::s3 {

namespace {

using Aws::Client::CoreErrors;
using Aws::Http::HttpResponseCode;

CoreErrors typeWithoutBody(HttpResponseCode status) {
    switch (status) {
        case HttpResponseCode::UNAUTHORIZED:
        case HttpResponseCode::FORBIDDEN:
            return CoreErrors::ACCESS_DENIED;
        case HttpResponseCode::NOT_FOUND:
            return CoreErrors::RESOURCE_NOT_FOUND;
        default:
            return CoreErrors::UNKNOWN;
    }
}

std::string formalName(const std::string& code) {
    const auto hash = code.find('#');
    return hash != std::string::npos ? code.substr(hash + 1) : code.substr(0, code.find(':'));
}

std::string printedChild(const tinyxml2::XMLElement& parent, const char* name) {
    const auto* found = parent.FirstChildElement(name);
    return found == nullptr ? std::string() : trimmed(printedText(*found));
}

std::string requestIdIn(const tinyxml2::XMLElement& root) {
    const std::string usual = printedChild(root, "RequestId");
    return usual.empty() ? printedChild(root, "RequestID") : usual;
}

CoreError errorByStatus(int status) {
    return Aws::Client::CoreErrorsMapper::GetErrorForHttpResponseCode(static_cast<HttpResponseCode>(status));
}

}  // namespace

CoreError errorWithoutBody(int status) {
    const auto code = static_cast<HttpResponseCode>(status);
    return {typeWithoutBody(code), "", "No response body.", Aws::Http::IsRetryableHttpResponseCode(code)};
}

CoreError errorFrom(int status, const XmlDocument& document) {
    const auto* error = findError(document);
    const bool understood = error != nullptr && error->FirstChildElement("Code") != nullptr;
    CoreError result = understood ? errorNamed(printedChild(*error, "Code"), printedChild(*error, "Message"))
                                  : errorByStatus(status);
    if (document.root() != nullptr) result.SetRequestId(requestIdIn(*document.root()));
    return result;
}

const tinyxml2::XMLElement* findError(const XmlDocument& document) {
    const auto* root = document.root();
    if (root == nullptr || root->Name() == std::string_view("Error")) return root;
    const auto* below = child(root, "Error");
    return below != nullptr ? below : child(child(root, "Errors"), "Error");
}

CoreError errorNamed(const std::string& code, const std::string& message) {
    if (code.empty()) return {CoreErrors::UNKNOWN, "", message, false};
    const std::string name = formalName(code);
    CoreError error = Aws::S3::S3ErrorMapper::GetErrorForName(name.c_str());
    const bool known = error.GetErrorType() != CoreErrors::UNKNOWN;
    error.SetExceptionName(known ? name : code);
    error.SetMessage(known ? message : "Unable to parse ExceptionName: " + code + " Message: " + message);
    return error;
}

CoreError xmlParseError(const std::string& parserErrorName) {
    return {CoreErrors::UNKNOWN, "Xml Parse Error", parserErrorName, false};
}

CoreError unexpectedResponse(std::string_view fault) {
    return {CoreErrors::UNKNOWN, "UnexpectedResponse", "The response " + std::string(fault), false};
}

CoreError missingField(const std::string& name) {
    return {CoreErrors::MISSING_PARAMETER, "MISSING_PARAMETER", "Missing required field [" + name + "]",
            false};
}

}  // namespace standin::aws::s3
