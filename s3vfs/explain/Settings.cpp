#include <filesystem>

#include "AwsS3ClientFactory.hpp"
#include "ConfigurationSources.hpp"
#include "NumberParsing.hpp"
#include "explain/Sections.hpp"
#include "explain/Wording.hpp"

namespace s3vfs::explain {

using storage::s3provider::CertificateSource;
using storage::s3provider::environmentText;
using storage::s3provider::NumberSetting;

namespace {

constexpr const char* schemeVariable = "ZR_AWS_SCHEME";

void addCertificates(Section& section, const char* what, const CertificateSource& source,
                     const std::string& used) {
    const bool isChosen = !environmentText(source.variable).empty();
    section.places.push_back({source.variable, variableShown(source.variable), isChosen ? "it is set" : ""});
    const std::string ofSystem = source.ofSystem();
    section.places.push_back({std::string("the system's ") + what,
                              ofSystem.empty() ? "none" : shown(ofSystem),
                              isChosen ? "" : "nobody chose another"});
    std::error_code ignored;
    if (!used.empty() && !std::filesystem::exists(used, ignored))
        section.remarks.push_back(std::string("there is no such ") + what +
                                  ": no certificate is trusted by it");
}

bool isNumber(const std::string& text) {
    try {
        storage::s3provider::parseInt(text);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void addNumber(Section& section, const NumberSetting& setting, std::int64_t used, const char* unit) {
    const std::string text = environmentText(setting.variable);
    const std::string value = std::to_string(used);
    const bool isDefault = text.empty() || !isNumber(text);
    section.places.push_back({setting.variable, variableShown(setting.variable),
                              value + " " + unit + (isDefault ? ", the default" : "")});
    if (text.empty() || text == value) return;
    section.remarks.push_back(std::string(setting.variable) +
                              (isDefault ? " is no number" : " is read as far as it is a number"));
}

}  // namespace

Section explainCertificates(const Aws::Client::ClientConfiguration& configuration) {
    Section section{"Certificates", {}, {}};
    addCertificates(section, "file", storage::s3provider::certificateFile, configuration.caFile);
    addCertificates(section, "folder", storage::s3provider::certificateFolder, configuration.caPath);
    return section;
}

Section explainRetries(const Aws::Client::ClientConfiguration& configuration) {
    Section section{"Retries", {}, {}};
    const auto retries = storage::s3provider::getRetrySettings();
    addNumber(section, storage::s3provider::attemptsSetting, retries.attempts, "attempts of a download");
    addNumber(section, storage::s3provider::retryTimeSetting, retries.retryTimeMs,
              "ms after one that failed");
    if (retries.attempts < 0)
        section.remarks.emplace_back(
            "a negative number of attempts stands for a huge one: a download that fails is tried without "
            "end");
    if (retries.attempts == 0) section.remarks.emplace_back("without attempts, every download fails unasked");
    if (retries.retryTimeMs < 0) section.remarks.emplace_back("a negative time is no pause");
    section.places.push_back({"the SDK's own",
                              "up to " + std::to_string(configuration.retryStrategy->GetMaxAttempts()) +
                                  " attempts of each request",
                              ""});
    return section;
}

Section explainEndpoint(const Aws::Client::ClientConfiguration& configuration) {
    Section section{"Endpoint", {}, {}};
    const std::string endpoint = storage::s3provider::endpointOverride();
    const bool isSet = !endpoint.empty();
    section.places.push_back({"ZR_AWS_ENDPOINT_OVERRIDE", isSet ? addressShown(endpoint) : notSet,
                              isSet ? "it is set, so the plug-in doesn't ask where the bucket is" : ""});
    section.places.push_back({"Amazon", "the endpoint of the region", isSet ? "" : "no other is set"});
    const bool isHttp = configuration.scheme == Aws::Http::Scheme::HTTP;
    const std::string scheme = variableShown(schemeVariable);
    const std::string use = std::string(isHttp ? "HTTP" : "HTTPS") + " where the endpoint doesn't say";
    section.places.push_back({schemeVariable, scheme, isSet ? use : ""});
    if (!isSet && isHttp)
        section.remarks.emplace_back("HTTP has no effect: Amazon's endpoints are spoken to by HTTPS");
    if (!isHttp && scheme != notSet && scheme != "HTTPS")
        section.remarks.emplace_back("ZR_AWS_SCHEME is HTTPS unless it is HTTP, in capitals");
    return section;
}

}  // namespace s3vfs::explain
