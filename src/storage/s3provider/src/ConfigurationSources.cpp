#include "ConfigurationSources.hpp"

#include <fl/i18n.hpp>

namespace storage::s3provider {

std::string environmentText(const char* variable) {
    return fl::i18n::to_string(fl::i18n::getenv(variable));
}

std::string regionProfile() {
    std::string profile = environmentText("AWS_PROFILE");
    return profile.empty() ? "default" : profile;
}

std::string bucketLookupRegion() {
    std::string region = environmentText("ZR_AWS_GETLOCATION_REGION");
    return region.empty() ? "us-east-2" : region;
}

std::string endpointOverride() {
    return environmentText("ZR_AWS_ENDPOINT_OVERRIDE");
}

bool usesProxies() {
    return environmentText("ZR_AWS_PROXY") != "OFF";
}

std::wstring proxyLookupUrl() {
    return fl::i18n::to_wstring(u"https://s3.amazonaws.com/");
}

}  // namespace storage::s3provider
