#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <contextmgr/ContextRegistry.hpp>
#include <filesystem>
#include <fstream>
#include <settings/core/Settings.hpp>
#include <settings/in_orrery/settings.hpp>
#include <string>

#include "support/process/Environment.hpp"
#include "support/process/TemporaryFolder.hpp"

namespace {

using contextmgr::ContextRegistry;
using settings::core::Settings;
using settings::core::SettingsError;
using settings::in_orrery::getSettingsRoot;
using settings::in_orrery::useSettingsRoot;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::ThrowsMessage;

std::shared_ptr<Settings> currentRoot() {
    return getSettingsRoot(ContextRegistry::getKvrID());
}

std::u16string proxyHost(Settings& root) {
    const auto web = root.getSettingsByFullName("orrery.web");
    return web ? web->get<std::u16string>("ProxyHost", "") : u"no node";
}

std::string withProxyHost(const std::string& host) {
    return R"({"orrery": {"web": {"ProxyHost": ")" + host + "\"}}}";
}

TEST(Settings, AreFoundByTheirFullName) {
    const auto root = Settings::fromJson(withProxyHost("b\u00FCro"));
    EXPECT_EQ(proxyHost(*root), u"b\u00FCro");
}

TEST(Settings, HaveNoNodeWhereTheJsonHasNoObject) {
    const auto root = Settings::fromJson(R"({"orrery": {"web": 5, "list": [{}], "none": null}, "a.b": {}})");
    EXPECT_NE(root->getSettingsByFullName("orrery"), nullptr);
    for (const char* name : {"orrery.web", "orrery.list", "orrery.none", "orrery.other", "orrery.web.x",
                             "Orrery", "orrery.", ".orrery", "", "a.b"})
        EXPECT_EQ(root->getSettingsByFullName(name), nullptr) << name;
}

TEST(Settings, KeepNodesAliveWithoutTheirRoot) {
    auto root = Settings::fromJson(withProxyHost("kept"));
    const auto web = root->getSettingsByFullName("orrery.web");
    root.reset();
    EXPECT_EQ(web->get<std::u16string>("ProxyHost", ""), u"kept");
}

TEST(Settings, GiveTheirValues) {
    const auto root =
        Settings::fromJson(R"({"yes": true, "no": false, "text": "\u00fc\ud83d\ude00", "empty": ""})");
    EXPECT_TRUE(root->get<bool>("yes", ""));
    EXPECT_FALSE(root->get<bool>("no", ""));
    EXPECT_EQ(root->get<std::u16string>("text", ""), u"\u00FC\U0001F600");
    EXPECT_EQ(root->get<std::u16string>("empty", ""), u"");
}

TEST(Settings, GiveFalseAndEmptyTextForWhatIsMissing) {
    const auto root = Settings::fromJson(R"({"none": null})");
    for (const char* key : {"none", "missing"}) {
        EXPECT_FALSE(root->get<bool>(key, ""));
        EXPECT_EQ(root->get<std::u16string>(key, ""), u"");
    }
}

TEST(Settings, RefuseAValueOfAnotherTypeWithoutShowingIt) {
    const auto root = Settings::fromJson(R"({"Use": "secret", "Port": 31280, "Node": {}})");
    EXPECT_THAT([&] { root->get<bool>("Use", ""); },
                ThrowsMessage<SettingsError>("setting 'Use' must be true or false, not string"));
    EXPECT_THAT([&] { root->get<std::u16string>("Port", ""); },
                ThrowsMessage<SettingsError>("setting 'Port' must be text, not number"));
    EXPECT_THROW(root->get<std::u16string>("Node", ""), SettingsError);
}

TEST(Settings, RefuseWhatIsNotAJsonObject) {
    for (const char* json : {"", "{", "{\"a\": secret}", "{} {}", "[]", "5", "null", "{\"a\": \"\xFF\"}"})
        EXPECT_THAT([&] { Settings::fromJson(json); },
                    ThrowsMessage<SettingsError>(AllOf(HasSubstr("JSON"), Not(HasSubstr("secret")))))
            << json;
}

class SettingsFiles : public testing::Test {
protected:
    ~SettingsFiles() override { useSettingsRoot(nullptr); }

    std::string write(const std::string& name, const std::string& content) {
        return temporary.write(name, content);
    }

    const testsupport::TemporaryFolder temporary;
    const std::filesystem::path& folder = temporary.path();
    testsupport::Environment environment{
        {"S3VFS_SETTINGS", std::nullopt}, {"XDG_CONFIG_HOME", std::nullopt}, {"HOME", folder.string()}};
};

TEST_F(SettingsFiles, NamedByTheEnvironmentComesFirst) {
    write(".config/s3vfs/settings.json", withProxyHost("own"));
    environment.set("S3VFS_SETTINGS", write("named.json", withProxyHost("named")));
    EXPECT_EQ(proxyHost(*currentRoot()), u"named");
}

TEST_F(SettingsFiles, InTheConfigurationFolderComesNext) {
    write(".config/s3vfs/settings.json", withProxyHost("home"));
    write("xdg/s3vfs/settings.json", withProxyHost("xdg"));
    environment.set("S3VFS_SETTINGS", "");
    EXPECT_EQ(proxyHost(*currentRoot()), u"home");
    environment.set("XDG_CONFIG_HOME", folder / "xdg");
    EXPECT_EQ(proxyHost(*currentRoot()), u"xdg");
}

TEST_F(SettingsFiles, InARelativeConfigurationFolderAreIgnored) {
    write(".config/s3vfs/settings.json", withProxyHost("home"));
    environment.set("XDG_CONFIG_HOME", "xdg");
    EXPECT_EQ(proxyHost(*currentRoot()), u"home");
}

TEST_F(SettingsFiles, MayBeMissing) {
    EXPECT_EQ(proxyHost(*currentRoot()), u"no node");
    environment.unset("HOME");
    EXPECT_EQ(proxyHost(*currentRoot()), u"no node");
}

TEST_F(SettingsFiles, AreReadEachTime) {
    write(".config/s3vfs/settings.json", withProxyHost("first"));
    EXPECT_EQ(proxyHost(*currentRoot()), u"first");
    write(".config/s3vfs/settings.json", withProxyHost("second"));
    EXPECT_EQ(proxyHost(*currentRoot()), u"second");
}

TEST_F(SettingsFiles, AreNamedInAnErrorWithoutTheirContent) {
    const std::string bad = write("bad.json", "{\"password\": secret}");
    environment.set("S3VFS_SETTINGS", bad);
    EXPECT_THAT([] { currentRoot(); },
                ThrowsMessage<SettingsError>("settings file '" + bad + "': bad JSON at byte 14"));
}

TEST_F(SettingsFiles, ThatCannotBeReadAreAnError) {
    for (const std::string& name :
         {(folder / "missing.json").string(), folder.string(), write("empty", "")}) {
        environment.set("S3VFS_SETTINGS", name);
        EXPECT_THAT([] { currentRoot(); }, ThrowsMessage<SettingsError>(HasSubstr(name)));
    }
}

TEST_F(SettingsFiles, ThatNeverEndAreAnError) {
    environment.set("S3VFS_SETTINGS", "/dev/zero");
    EXPECT_THAT([] { currentRoot(); },
                ThrowsMessage<SettingsError>("settings file '/dev/zero': it is larger than 4 MiB"));
}

TEST_F(SettingsFiles, MayHaveFourMebibytes) {
    const std::string content = withProxyHost("large");
    constexpr std::size_t largest = std::size_t(4) << 20U;
    const auto file = write("large.json", content + std::string(largest - content.size(), ' '));
    environment.set("S3VFS_SETTINGS", file);
    EXPECT_EQ(proxyHost(*currentRoot()), u"large");
    std::ofstream(file, std::ios::app) << ' ';
    EXPECT_THAT([] { currentRoot(); }, ThrowsMessage<SettingsError>(HasSubstr("larger than 4 MiB")));
}

TEST_F(SettingsFiles, OfNamesThatNoFileHasArentQuoted) {
    environment.set("S3VFS_SETTINGS", std::string(100000, 'a'));
    EXPECT_THAT([] { currentRoot(); },
                ThrowsMessage<SettingsError>("no settings file has a name of 100000 bytes"));
}

TEST_F(SettingsFiles, GiveWayToTheRootThatIsUsedInstead) {
    environment.set("S3VFS_SETTINGS", write("named.json", withProxyHost("file")));
    const auto root = Settings::fromJson(withProxyHost("memory"));
    useSettingsRoot(root);
    EXPECT_EQ(currentRoot(), root);
    useSettingsRoot(nullptr);
    EXPECT_EQ(proxyHost(*currentRoot()), u"file");
}

TEST(ContextRegistry, KnowsOneContext) {
    EXPECT_EQ(ContextRegistry::getKvrID(), ContextRegistry::getKvrID());
    EXPECT_NE(ContextRegistry::getKvrID(), contextmgr::KvrID(1));
}

}  // namespace
