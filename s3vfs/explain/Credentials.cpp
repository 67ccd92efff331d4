#include <aws/core/auth/AWSCredentialsProvider.h>

#include <algorithm>

#include "ConfigurationSources.hpp"
#include "CredentialsSources.hpp"
#include "ZRCredentialsProviderChain.hpp"
#include "explain/Sections.hpp"
#include "explain/Wording.hpp"

namespace s3vfs::explain {

using Aws::Auth::AWSCredentials;
using storage::s3provider::areComplete;
using storage::s3provider::CredentialsPlace;
using storage::s3provider::CredentialsSource;
using storage::s3provider::environmentText;

namespace {

std::string nameOf(CredentialsPlace place) {
    switch (place) {
        case CredentialsPlace::HostEnvironment:
            return "environment, as the host reads it";
        case CredentialsPlace::SdkEnvironment:
            return "environment, as the SDK reads it";
        case CredentialsPlace::ProfileFile:
            return "profile '" + shown(Aws::Auth::GetConfigProfileName()) + "' in " +
                   shown(Aws::Auth::ProfileConfigFileAWSCredentialsProvider::GetCredentialsProfileFilename());
        case CredentialsPlace::MetadataService:
            break;
    }
    const std::string address = environmentText("AWS_EC2_METADATA_SERVICE_ENDPOINT");
    return "metadata service " + (address.empty() ? "of the machine" : "at " + addressShown(address));
}

std::string describe(const AWSCredentials& credentials) {
    if (credentials.IsEmpty())
        return credentials.GetSessionToken().empty() ? "nothing" : "a session token alone";
    if (credentials.GetAWSAccessKeyId().empty()) return "a secret without access key";
    const std::string key = accessKeyShown(credentials.GetAWSAccessKeyId());
    if (credentials.GetAWSSecretKey().empty()) return key + " without secret";
    return key + (credentials.GetSessionToken().empty() ? " and secret" : ", secret and session token");
}

bool isHalf(const AWSCredentials& credentials) {
    return !credentials.IsEmpty() && !areComplete(credentials);
}

bool beginsWith(const std::string& text, const char* beginning) {
    return text.rfind(beginning, 0) == 0;
}

bool isOdd(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char c) { return c <= ' ' || c > '~'; });
}

constexpr std::size_t lengthOfSecrets = 40;  // those of Amazon

// Amazon's long-lived access keys begin with AKIA, those that need a session token with ASIA.
void remarkOnPair(const AWSCredentials& credentials, std::vector<std::string>& remarks) {
    const std::string& key = credentials.GetAWSAccessKeyId();
    const bool token = !credentials.GetSessionToken().empty();
    if (key.size() >= lengthOfSecrets || isAccessKeyOfAmazon(credentials.GetAWSSecretKey()))
        remarks.emplace_back("the access key looks like a secret: are the two swapped?");
    if (isOdd(key) || isOdd(credentials.GetAWSSecretKey()) || isOdd(credentials.GetSessionToken()))
        remarks.emplace_back("there are blanks or other characters that keys don't have");
    if (beginsWith(key, "AKIA") && token)
        remarks.emplace_back("a long-lived access key with a session token: they don't belong together");
    if (beginsWith(key, "ASIA") && !token)
        remarks.emplace_back("a temporary access key without its session token");
}

void remarkOnProfiles(std::vector<std::string>& remarks) {
    if (Aws::Auth::GetConfigProfileName() != storage::s3provider::regionProfile())
        remarks.emplace_back("AWS_DEFAULT_PROFILE names the profile of the keys, but not that of the region");
}

// What making a chain throws, every client throws.
void tryChain(CredentialsSection& credentials) {
    try {
        const storage::s3provider::ZRCredentialsProviderChain chain;
    } catch (const std::exception& error) {
        credentials.usable = false;
        credentials.section.remarks.push_back("no bucket can be opened: " + shown(error.what()));
    }
}

Place ask(const CredentialsSource& source, CredentialsSection& found) {
    const bool isLate = !found.credentials.IsEmpty();
    if (isLate && source.place == CredentialsPlace::MetadataService)
        return {nameOf(source.place), "not asked, since keys were found", ""};
    const AWSCredentials answer = source.make()->GetAWSCredentials();
    const bool wins = !isLate && areComplete(answer);
    if (wins) {
        found.credentials = answer;
        remarkOnPair(answer, found.section.remarks);
    } else if (isHalf(answer) && source.place != CredentialsPlace::SdkEnvironment) {
        found.section.remarks.push_back(nameOf(source.place) + ": half a pair of keys, which is passed over");
    }
    return {nameOf(source.place), describe(answer), wins ? "the first with both" : ""};
}

}  // namespace

CredentialsSection explainCredentials() {
    CredentialsSection found{{"Credentials", {}, {}}, {}, true};
    tryChain(found);
    for (const CredentialsSource& source : storage::s3provider::credentialsSources)
        found.section.places.push_back(ask(source, found));
    if (found.credentials.IsEmpty())
        found.section.remarks.emplace_back("nobody has both: requests are not signed");
    remarkOnProfiles(found.section.remarks);
    return found;
}

}  // namespace s3vfs::explain
