#include <algorithm>
#include <filesystem>

#include "AwsS3ClientFactory.hpp"
#include "ConfigurationSources.hpp"
#include "EnvironmentText.hpp"
#include "explain/Sections.hpp"
#include "explain/Wording.hpp"

namespace s3vfs::explain {

using storage::s3provider::endpointOverride;
using storage::s3provider::RegionSource;

namespace {

bool exists(const std::string& file) {
    std::error_code ignored;
    return std::filesystem::exists(file, ignored);
}

std::string nameOf(const RegionSource& source) {
    if (source.variable) return source.variable;
    return "profile '" + shown(storage::s3provider::regionProfile()) + "' in " + shown(source.fileName());
}

std::string answerOf(const RegionSource& source, const std::string& region) {
    if (!region.empty()) return shown(region);
    if (source.variable) return notSet;
    return exists(source.fileName()) ? "no region" : "no such file";
}

bool isRegionName(const std::string& region) {
    const auto isLabelCharacter = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-';
    };
    return region.size() <= 63 && std::all_of(region.begin(), region.end(), isLabelCharacter);
}

Place lookup(const Answers& answers, const std::string& chosen) {
    const std::string name = "S3, through " + shown(storage::s3provider::bucketLookupRegion());
    if (!endpointOverride().empty()) return {name, "not asked, since an endpoint is set", ""};
    if (!chosen.empty()) return {name, "not asked, since a region is chosen", ""};
    const std::string region = storage::s3provider::regionFrom(answers.location);
    if (region.empty()) return {name, "does not say", ""};
    return {name, shown(region), "nobody chose a region"};
}

bool machineIsAsked() {
    std::string disabled = storage::s3provider::environmentText("AWS_EC2_METADATA_DISABLED");
    std::transform(disabled.begin(), disabled.end(), disabled.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return disabled != "true";
}

Place defaultOfSdk(const Answers& answers, bool isUsed) {
    const std::string name = machineIsAsked() ? "the SDK, which may ask the metadata service"
                                              : "the SDK, metadata service disabled";
    if (!isUsed) return {name, "not needed", ""};
    return {name, shown(answers.configuration.region), "nobody else names a region"};
}

}  // namespace

std::string signingRegion(const Answers& answers) {
    std::string region = storage::s3provider::regionFromEnvironment();
    if (region.empty() && endpointOverride().empty())
        region = storage::s3provider::regionFrom(answers.location);
    return region.empty() ? answers.configuration.region : region;
}

Section explainRegion(const Answers& answers) {
    Section section{"Region", {}, {}};
    std::string chosen;
    for (const RegionSource& source : storage::s3provider::regionSources) {
        const std::string region = storage::s3provider::regionFrom(source);
        const bool wins = chosen.empty() && !region.empty();
        if (wins) chosen = region;
        if (!wins && !region.empty() && region != chosen)
            section.remarks.push_back(nameOf(source) + " names another region, which is not used");
        section.places.push_back(
            {nameOf(source), answerOf(source, region), wins ? "the first that names a region" : ""});
    }
    section.places.push_back(lookup(answers, chosen));
    const bool isKnown = !chosen.empty() || !section.places.back().use.empty();
    section.places.push_back(defaultOfSdk(answers, !isKnown));
    if (!isRegionName(chosen))
        section.remarks.emplace_back("this is no name of a region: every request fails");
    return section;
}

}  // namespace s3vfs::explain
