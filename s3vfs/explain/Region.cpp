#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/config/AWSProfileConfigLoader.h>

#include <algorithm>
#include <boost/algorithm/string/case_conv.hpp>
#include <filesystem>
#include <iterator>

#include "AwsS3ClientFactory.hpp"
#include "ConfigurationSources.hpp"
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

std::string fileAnswer(const std::string& file, const std::string& region) {
    if (!region.empty()) return shown(region);
    return exists(file) ? "no region" : "no such file";
}

std::string answerOf(const RegionSource& source, const std::string& region) {
    if (!source.variable) return fileAnswer(source.fileName(), region);
    return region.empty() ? notSet : shown(region);
}

/// A region becomes a label of a host's name.
bool isRegionName(const std::string& region) {
    const auto isLabelCharacter = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-';
    };
    return !region.empty() && region.size() <= 63 && region.front() != '-' && region.back() != '-' &&
           std::all_of(region.begin(), region.end(), isLabelCharacter);
}

/// The places where the user may have chosen a region.
void addChoices(Section& section) {
    std::string chosen;
    for (const RegionSource& source : storage::s3provider::regionSources) {
        const std::string region = storage::s3provider::regionFromSource(source);
        const bool wins = chosen.empty() && !region.empty();
        if (wins) chosen = region;
        section.places.push_back(
            {nameOf(source), answerOf(source, region), wins ? "the first that names a region" : ""});
        if (!region.empty() && !isRegionName(region))
            section.remarks.push_back(nameOf(source) + " holds no name of a region" +
                                      (wins ? ": every request fails" : ""));
        if (region != chosen && !region.empty())
            section.remarks.push_back(nameOf(source) + " names another region, which is not used");
    }
}

void addLookup(Section& section, const Answers& answers) {
    const std::string through = storage::s3provider::bucketLookupRegion();
    Place place{"S3, through " + shown(through), "the plug-in doesn't ask, since a region is chosen", ""};
    if (!endpointOverride().empty()) {
        place.answer = "the plug-in doesn't ask, since an endpoint is set";
    } else if (pluginAsks()) {
        place.answer = answers.region.empty() ? "does not say" : shown(answers.region);
        place.use = answers.region.empty() ? "" : "nobody chose a region";
    }
    section.places.push_back(place);
    if (!isRegionName(through))
        section.remarks.emplace_back(
            "ZR_AWS_GETLOCATION_REGION holds no name of a region: S3 can't be asked there");
}

/// Unlike the plug-in, the SDK wants "[profile X]" for a profile X of the config file.
std::string regionOfSdkProfile(const std::string& profile) {
    Aws::Config::AWSConfigFileProfileConfigLoader file(Aws::Auth::GetConfigProfileFilename(), true);
    if (!file.Load()) return {};
    const auto found = file.GetProfiles().find(profile);
    return found == file.GetProfiles().end() ? std::string() : found->second.GetRegion();
}

void remarkOnSections(Section& section) {
    const std::string profile = storage::s3provider::regionProfile();
    const std::string file = Aws::Auth::GetConfigProfileFilename();
    if (regionOfSdkProfile(profile).empty()) return;
    if (!storage::s3provider::regionFromProfileFile(file, profile).empty()) return;
    section.remarks.push_back("the plug-in looks for [" + shown(profile) + "] in " + shown(file) +
                              ", and finds [profile " + shown(profile) + "], which only the SDK reads");
}

bool isMachineAsked() {
    return boost::algorithm::to_lower_copy(
               storage::s3provider::environmentText("AWS_EC2_METADATA_DISABLED")) != "true";
}

bool isAnyVariableSet() {
    return std::any_of(std::begin(storage::s3provider::regionSources),
                       std::end(storage::s3provider::regionSources), [](const RegionSource& source) {
                           return source.variable && !storage::s3provider::regionFromSource(source).empty();
                       });
}

/// What the SDK does when neither a variable nor its profile names a region.
constexpr const char* builtIn = "us-east-1";

std::string answerOfMachine(const std::string& region, bool isNeeded) {
    if (!isNeeded) return "not asked, since the SDK has a region";
    if (!isMachineAsked()) return "not asked, since AWS_EC2_METADATA_DISABLED is true";
    return region == builtIn ? "none, or us-east-1" : shown(region);
}

/// The places that the SDK asks by itself, behind the two variables.
void addPlacesOfSdk(Section& section, const Answers& answers, bool isUsed) {
    const std::string& region = answers.configuration.region;
    const std::string name = Aws::Auth::GetConfigProfileName();
    const std::string file = Aws::Auth::GetConfigProfileFilename();
    const std::string ofProfile = regionOfSdkProfile(name);
    const bool machineIsNeeded = ofProfile.empty() && !isAnyVariableSet();
    std::vector<Place> places = {
        {"profile '" + shown(name) + "' in " + shown(file) + ", by the SDK", fileAnswer(file, ofProfile), ""},
        {"metadata service, by the SDK", answerOfMachine(region, machineIsNeeded), ""},
        {"built into the SDK", builtIn, ""}};
    const std::size_t winner = !machineIsNeeded ? 0 : region != builtIn ? 1 : 2;
    if (isUsed) places[winner].use = "nobody else names a region";
    section.places.insert(section.places.end(), places.begin(), places.end());
}

}  // namespace

Section explainRegion(const Answers& answers) {
    Section section{"Region", {}, {}};
    addChoices(section);
    addLookup(section, answers);
    addPlacesOfSdk(section, answers, answers.region.empty());
    remarkOnSections(section);
    return section;
}

}  // namespace s3vfs::explain
