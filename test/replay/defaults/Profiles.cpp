#include "replay/defaults/Descriptions.hpp"
#include "replay/defaults/Observers.hpp"
#include "replay/defaults/Setting.hpp"

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/config/AWSProfileConfigLoader.h>
#include <openssl/evp.h>

#include <fstream>
#include <stdexcept>
#include <thread>

namespace replay {
namespace {

using Aws::Auth::ProfileConfigFileAWSCredentialsProvider;
using Aws::Config::AWSConfigFileProfileConfigLoader;
using Aws::Config::Profile;

/// The settings that the recording asked for.
constexpr const char* settingNames[] = {"region", "output", "color", "addressing_style", "aws_access_key_id",
                                        "key",    "Region", "REGION"};

/// A longer value is recorded by its length, and more profiles by the last one's.
constexpr std::size_t longestValue = 1000;
constexpr std::size_t mostProfiles = 100;

std::string decodeBase64(const std::string& text) {
    std::string bytes(text.size(), '\0');
    const int size =
        EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                        reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
    if (size < 0) throw std::runtime_error("not base64: " + text);
    bytes.resize(static_cast<std::size_t>(size) -
                 static_cast<std::size_t>(std::count(text.begin(), text.end(), '=')));
    return bytes;
}

std::string contentOf(const Json& content) {
    if (content.contains("base64")) return decodeBase64(content["base64"]);
    std::string text = content["text"];
    if (content.contains("repeated")) {
        for (int i = 0; i < content["repeated"][1]; ++i)
            text += content["repeated"][0].get<std::string>();
        text += content["end"].get<std::string>();
    }
    return text;
}

std::string fileOf(const Json& recorded, const Setting& setting) {
    if (recorded.contains("file")) return setting.live(recorded["file"]);
    std::string file = setting.live("{DIR}/profiles");
    std::ofstream(file, std::ios::binary) << contentOf(recorded["content"]);
    return file;
}

void addIfAny(Json& described, const char* name, const std::string& value) {
    if (value.empty()) return;
    described[name] =
        value.size() <= longestValue ? value : "(" + std::to_string(value.size()) + " characters)";
}

Json describe(const Profile& profile) {
    Json described{{"name", profile.GetName()}};
    addIfAny(described, "region", profile.GetRegion());
    addIfAny(described, "access_key", profile.GetCredentials().GetAWSAccessKeyId());
    addIfAny(described, "secret_key", profile.GetCredentials().GetAWSSecretKey());
    addIfAny(described, "session_token", profile.GetCredentials().GetSessionToken());
    Json values;
    for (const char* const name : settingNames)
        addIfAny(values, name, profile.GetValue(name));
    if (!values.is_null()) described["values"] = std::move(values);
    return described;
}

Json describe(const Aws::Map<Aws::String, Profile>& profiles) {
    Json described = Json::object();
    for (const auto& [name, profile] : profiles)
        if (profiles.size() < mostProfiles) described[name] = describe(profile);
    if (profiles.size() >= mostProfiles) described["p199"] = describe(profiles.at("p199"));
    return described;
}

}  // namespace

Json observeFileNames(const Json& recorded) {
    const Setting setting(recorded);
    return {{"credentials_file",
             setting.asRecorded(ProfileConfigFileAWSCredentialsProvider::GetCredentialsProfileFilename())},
            {"credentials_dir",
             setting.asRecorded(ProfileConfigFileAWSCredentialsProvider::GetProfileDirectory())},
            {"config_file", setting.asRecorded(Aws::Auth::GetConfigProfileFilename())},
            {"profile_name", Aws::Auth::GetConfigProfileName()}};
}

Json observeCredentialsSources(const Json& recorded) {
    const Setting setting(recorded);
    return {{"environment", describe(Aws::Auth::EnvironmentAWSCredentialsProvider().GetAWSCredentials())},
            {"profile_file", describe(ProfileConfigFileAWSCredentialsProvider().GetAWSCredentials())}};
}

Json observeProfileCredentials(const Json& recorded) {
    const Setting setting(recorded);
    const std::string profile = recorded["provider"]["profile"];
    ProfileConfigFileAWSCredentialsProvider provider(profile.c_str(), recorded["provider"]["refresh_ms"]);
    Json calls = Json::array();
    for (const Json& call : recorded["calls"]) {
        setting.write(call.value("files", Json::object()));
        std::this_thread::sleep_for(std::chrono::milliseconds(call.value("pause_ms", 0)));
        calls.push_back(describe(provider.GetAWSCredentials()));
    }
    return {{"calls", std::move(calls)}};
}

Json observeProfileLoader(const Json& recorded) {
    const Setting setting(recorded);
    AWSConfigFileProfileConfigLoader loader(fileOf(recorded, setting), recorded["use_profile_prefix"]);
    Json seen{{"load", loader.Load()}, {"profiles", describe(loader.GetProfiles())}};
    seen["load_again"] = loader.Load();
    seen["profiles_after_second_load"] = loader.GetProfiles().size();
    return seen;
}

}  // namespace replay
