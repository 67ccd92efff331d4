#include "core/RoleCredentials.hpp"

#include <nlohmann/json.hpp>

namespace standin::aws {
namespace {

std::string text(const nlohmann::json& document, const char* name) {
    const auto found = document.find(name);
    return found != document.end() && found->is_string() ? found->get<std::string>() : std::string();
}

}  // namespace

std::optional<Aws::Auth::AWSCredentials> parseRoleCredentials(std::string_view document) {
    const auto json = nlohmann::json::parse(document, nullptr, false);
    if (json.is_discarded()) return std::nullopt;
    Aws::Auth::AWSCredentials credentials(text(json, "AccessKeyId"), text(json, "SecretAccessKey"),
                                          text(json, "Token"));
    const Aws::Utils::DateTime expiration(text(json, "Expiration"), Aws::Utils::DateFormat::ISO_8601);
    if (expiration.WasParseSuccessful()) credentials.SetExpiration(expiration);
    return credentials;
}

}  // namespace standin::aws
